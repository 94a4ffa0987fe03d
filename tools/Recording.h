#pragma once

#include "Medium.h"
#include "Meter.h"
#include "Session.h"
#include "TerminalLine.h"

#include <multimedia/AudioChannelConfiguration.h>
#include <multimedia/AudioRecorder.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>

#include <optional>

namespace voro {

/** How `voro record` records. */
struct RecordingSettings {
    Medium file;
    multimedia::AudioChannelConfiguration::Type channels = multimedia::AudioChannelConfiguration::Default;
    /** How much to record, in milliseconds; without it until somebody ends it. */
    std::optional<unsigned> length;
    bool json = false;
};

/** Records into a file and does what the keys ask for. At the end the file is complete. */
class Recording : public Session {
    Q_OBJECT
public:
    explicit Recording(RecordingSettings settings);

protected:
    bool begin() override;
    void end() override;
    void onKey(Key key) override;
    bool hold() override;
    /** The rest of the file has to be written. */
    StopSignals::Patience patience() const override { return StopSignals::Long; }
    void goOn() override;
    void redraw() override { refresh(); }
    void clearLine() override;

private:
    void connectRecorder();
    multimedia::MediaError::Type start();
    void onDurationChanged(unsigned duration);
    void onMediaStateChanged(multimedia::MediaState::Type state);
    void onError(multimedia::MediaError::Type error, unsigned position);
    void togglePause();
    /** Asks for what is the case anyway, which fails when nothing is recorded any more. */
    void checkRenderer();
    /** Has the renderer record no more than is wanted; false when it cannot be told. */
    bool limit() const;
    qint64 fileSize() const;
    void refresh();

    const RecordingSettings m_settings;
    std::optional<TerminalLine> m_line;
    /** The last line of words. */
    QString m_text;
    multimedia::AudioRecorder m_recorder;
    /** Runs out when the renderer says nothing for long. */
    QTimer m_silence;
    QElapsedTimer m_time;
    PeakHold m_peak;
    double m_level = 0;
    /** What was recorded; the recorder forgets it at its end. */
    unsigned m_duration = 0;
};

} // namespace voro
