#pragma once

#include <QtCore/QObject>

#include <pulse/context.h>
#include <pulse/introspect.h>
#include <pulse/subscribe.h>
#include <services/nowplaying/Desktop.h>

#include <deque>
#include <memory>
#include <optional>
#include <vector>

namespace voro::nowplaying {

/** The volume of the sound server's default sink. */
class SinkVolume : public QObject {
    Q_OBJECT
public:
    ~SinkVolume() override;

    /** Connects to the sound server unless it is connected, so that the volume is known. */
    void watch();
    /** Carries the command out when the sink is known. */
    void change(const VolumeCommand &command, const Desktop::Answered &done);
    /** The volume as a fraction of the normal one, at most 1. */
    double volume() const;

Q_SIGNALS:
    void changed();

private:
    struct Sink {
        pa_cvolume volume{};
        bool isMuted = false;
    };
    struct Waiting {
        VolumeCommand command;
        Desktop::Answered done;
    };
    struct ContextDeleter {
        void operator()(pa_context *context) const;
    };

    void contextChanged();
    void sinkReported(const pa_sink_info *info, int end);
    void askForSink();
    void carryOut(const VolumeCommand &command, const Desktop::Answered &done);
    void acknowledged(bool isGood);
    void fail(const QString &problem);

    std::unique_ptr<pa_context, ContextDeleter> m_context;
    std::optional<Sink> m_sink;
    /** Commands that wait for the sink to be known. */
    std::vector<Waiting> m_waiting;
    /** Those that were sent and not acknowledged; a report of the sink may be from before them. */
    std::deque<Desktop::Answered> m_sent;
};

} // namespace voro::nowplaying
