#pragma once

#include "Engine.h"
#include "MediaFiles.h"
#include "Nursery.h"
#include "UsageWatch.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>

#include <pps/broker/Broker.h>
#include <pps/Fd.h>

#include <map>
#include <memory>
#include <string>

namespace voro::renderer {

/** A worker process and the conversation with it. It is spare until somebody listens. */
class Worker : public std::enable_shared_from_this<Worker> {
public:
    /** How long a worker may take, in milliseconds, and what it may use. */
    struct Limits {
        /** Between two looks at it. */
        int check = 1'000;
        /** To say anything at all. */
        int silence = 5'000;
        /** For a request, though it says that it lives. */
        int request = 30'000;
        /** The same for opening what lies on this machine. */
        int localOpening = 15'000;
        /** Until it has connected: the very first one on a machine reads every plugin. */
        int start = 60'000;
        /** Between two looks at what it uses while nothing is expected of it. */
        int restingCheck = 60'000;
        UsageWatch::Limits usage{};
    };
    struct Kind {
        std::string program;
        Limits limits;
        /** Whether the program can be a nursery. */
        bool mayFork = false;
    };
    /** The installed program with the usual limits. */
    static Kind usual();

    /** `onDeath` is called from the event loop when the worker crashed or hung, at the latest then. */
    Worker(pps::Broker &broker, const Limits &limits, Reach reach, std::function<void()> onDeath);
    Worker(const Worker &) = delete;
    Worker &operator=(const Worker &) = delete;

    /** Hands over what its process has to be started with. */
    Nursery::Sockets takeSockets() { return std::move(m_theirs); }
    /** Has a process from now on. */
    void begin(std::unique_ptr<Process> process);
    bool isDead() const { return m_isDead; }
    Reach reach() const { return m_reach; }

    /** The name of its socket at the broker. */
    uint64_t socket() const { return m_socket; }
    pps::ClientId client() const { return m_client; }

    void connected(pps::ClientId client);
    void received(std::string_view text);
    void closed();

    void setListener(EngineListener *listener);
    /** The process that stands for it as long as it is there. */
    void setOwner(pid_t owner, pps::Accounts::Charge charge);
    /** Detaches the listener: no events, and pending requests get no answer. */
    void detachListener();
    /** As Engine::ask(). What is too long for a message fails at once. */
    void ask(const Request &request, Engine::Answered done);
    /**
     * Hands over the file to record into, or the end of the frame queue of that name; false when the worker does not
     * take it.
     */
    bool pass(int descriptor, std::string_view name = {});
    void setWatched(bool isWatched);
    void setCompleting(bool isCompleting) { m_isCompleting = isCompleting; }
    bool isCompleting() const { return m_isCompleting; }

    /** Lets it complete what it records, and end by itself. */
    void leaveRunning();
    /** Gives up the conversation and hands the process over, to be killed. */
    std::unique_ptr<Process> release();
    /** Reports its death to its listener, if it has one. */
    void reportDeath();

private:
    void send(const std::string &text);
    void die();
    void check();
    bool isExpected() const { return m_isWatched || !m_pending.empty(); }
    bool isExcessive();
    void updateTimer();
    void handFiles(const Request &request, int64_t id);

    pps::Broker &m_broker;
    const Limits m_limits;
    const Reach m_reach;
    Nursery::Sockets m_theirs;
    std::function<void()> m_onDeath;
    std::unique_ptr<Process> m_process;
    uint64_t m_socket = 0;
    /** Where files are handed over that it writes. */
    pps::Fd m_files;
    std::unique_ptr<MediaFiles> m_media;
    pps::ClientId m_client = 0;
    EngineListener *m_listener = nullptr;
    pps::Accounts::Charge m_charge;
    struct Pending {
        Engine::Answered done;
        /** How long it may take from the moment when the worker gets it. */
        int longest;
        QElapsedTimer age;
    };
    bool isOverdue() const;
    std::map<int64_t, Pending> m_pending;
    /** Requests from before it connected. */
    std::vector<std::string> m_unsent;
    int64_t m_lastId = 0;
    /** The request to open a medium that came last. */
    int64_t m_opening = 0;
    bool m_hangs = false;
    bool m_isWatched = false;
    bool m_isCompleting = false;
    bool m_isDead = false;
    UsageWatch m_usage;
    QTimer m_timer;
    QElapsedTimer m_silence;
};

} // namespace voro::renderer
