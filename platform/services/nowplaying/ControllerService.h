#pragma once

#include "Audience.h"
#include "Messages.h"

#include <QtCore/QTimer>

#include <functional>

namespace voro::nowplaying {

/** The service of the controllers: reports the source to them, and takes their commands for it. */
class ControllerService : private pps::Service {
public:
    /** Takes how a command went: empty, or a problem for people. */
    using Answered = std::function<void(const QString &problem)>;

    class Listener {
    public:
        virtual ~Listener() = default;
        /** Carries a command out. `done` may be called later. */
        virtual void commanded(const Command &command, const Answered &done) = 0;
        /** Somebody opened the service for the first time. */
        virtual void controllerOpened() = 0;
        /**
         * Somebody is about to subscribe. Returns the kinds that the source will report afresh: they are held back for
         * a short time.
         */
        virtual Audience::Kinds subscribing() = 0;
        /** hasSubscribers() may have changed. */
        virtual void subscribersChanged() = 0;
    };

    ControllerService(pps::Broker &broker, Listener &listener);
    ~ControllerService() override;
    ControllerService(const ControllerService &) = delete;
    ControllerService &operator=(const ControllerService &) = delete;

    bool hasSubscribers() const { return !m_audience.isEmpty(); }

    /** Reports another source, or none (0), of which nothing else is known yet. */
    void reportSource(qint64 process);
    void reportState(State state);
    void reportMetadata(const Metadata &metadata);
    void reportTrackChange();
    /** The metadata as they are now, for newcomers; for the others they have not changed. */
    void renewMetadata(const Metadata &metadata);
    /** What was held back is not awaited any more. */
    void release();

private:
    void clientOpened(pps::ClientId client, const pps::Peer &peer) override;
    void clientMessage(pps::ClientId client, std::string_view text) override;
    void clientClosed(pps::ClientId client) override;
    void clientHasRead(pps::ClientId client) override { m_audience.hasRead(client); }

    void subscribe(pps::ClientId client);
    void unsubscribe(pps::ClientId client);
    void setSource(qint64 process);

    pps::Broker &m_broker;
    Listener &m_listener;
    Audience m_audience;
    /** What is held back from newcomers while the timer runs. */
    Audience::Kinds m_heldBack = 0;
    QTimer m_wait;
};

} // namespace voro::nowplaying
