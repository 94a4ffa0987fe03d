#pragma once

#include "DiskJob.h"
#include "Engine.h"
#include "FileView.h"
#include "Folder.h"
#include "Journal.h"
#include "Parking.h"

#include <pps/broker/Broker.h>

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace voro::renderer {

/**
 * One renderer context: it takes an application's commands in their order, has an engine do what only an engine can
 * do, and shows its state in its folder. It outlives its engines.
 */
class Context : private pps::Service,
                private EngineListener,
                private Parking::Guest {
public:
    /** How many engines may die in a row with a medium. */
    static constexpr int MostDeaths = 10;

    /** On the account of a process, which alone can command it; without one everybody can. */
    Context(pps::Broker &broker, EngineSource &engines, Parking &parking, std::string path,
            pid_t owner = pps::Accounts::Services);
    ~Context() override;
    Context(const Context &) = delete;
    Context &operator=(const Context &) = delete;

    /** Takes over what a context knew that went with its daemon, by its return. */
    void restore(const pps::Message &message);
    /** Whether its control object is served. */
    bool isServed() const { return m_isServed; }
    const std::string &path() const { return m_folder.path(); }
    bool hasMedium() const { return m_input.has_value(); }
    /** Gives the engine back, as after a long rest; does nothing when it does not rest. */
    void park() override;
    /** Has a function called when it has let go of its medium. */
    void onIdle(std::function<void()> callback) { m_onIdle = std::move(callback); }

private:
    /** The properties of a track that decide whether it can be parked. */
    struct Kind {
        bool isFilm = false;
        bool isSeekable = false;
        int64_t duration = 0;
    };
    struct PendingCommand {
        pps::ClientId client;
        pps::Accounts::Charge charge;
        pps::Message message;
    };
    using Handler = void (Context::*)(const pps::Message &);

    void clientOpened(pps::ClientId client, const pps::Peer &peer) override;
    void clientMessage(pps::ClientId client, std::string_view text) override;
    void clientClosed(pps::ClientId client) override;
    void engineEvent(const Event &event) override;
    void engineDied() override;
    void engineNeedsNetwork() override;

    std::string returnText() const;
    void runNext();
    void begin(Handler handler, const pps::Message &message);
    void finish(const Result &result, std::string_view lines = {});
    static Handler handlerOf(std::string_view command);

    void contextParameters(const pps::Message &message);
    void inputAttach(const pps::Message &message);
    void inputDetach(const pps::Message &message);
    void inputParameters(const pps::Message &message);
    void outputAttach(const pps::Message &message);
    void outputDetach(const pps::Message &message);
    void outputParameters(const pps::Message &message);
    void play(const pps::Message &message);
    void seek(const pps::Message &message);
    void speedSet(const pps::Message &message);
    void stop(const pps::Message &message);
    void trackParameters(const pps::Message &message);

    void closeMedium(Engine::Answered done);
    void attach(const Journal::Input &input);
    void refuseInput(const Result &problem);
    void open(const Journal::Input &input, Engine::Answered done);
    Reach neededReach(const Journal::Input &input) const;
    bool doesReach() const;
    enum class Purpose { GoOn, Trial };
    void resumeAtTrackStart();
    void reopen(Purpose purpose, Engine::Answered done);
    void setParameters(const pps::Message &message, const std::function<Result(const Parameters &)> &take);
    void applySettings(const std::string &lines = {});
    void sendSettings(Engine::Answered done);
    bool isRecording() const { return m_input && m_input->isRecording(); }
    Result checkRecording() const;
    void completeRecording(const std::function<void()> &next);
    void attachFile(const std::string &url);
    void outputAttached(const Result &result, int id);
    void waitForDisk(const std::string &path, DiskJob::Work work, DiskJob::Finished done);
    void startPlaying();
    void startRecording(const std::shared_ptr<OpenRecording> &recording, const Result &opened);
    void closeAndFinish(const std::shared_ptr<OpenRecording> &recording, const Result &result);
    void showPlaying(const Result &result);
    void stopPlaying(Engine::Answered done);
    void setState(State state, const std::optional<Folder::Ending> &ending = {});
    void setSpeed(Speed speed);
    void watchEngine();
    Kind kindOf(unsigned track) const;
    bool canPark() const;
    void updateParking();
    void setSilent(bool isSilent);
    void showStatus(const events::Status &status);
    void showTrack(const events::Track &track);
    void showQueue(const events::Queue &queue);
    void end(ErrorCode code, const std::optional<int64_t> &position);

    std::function<void()> m_onIdle;
    pps::Broker &m_broker;
    EngineSource &m_engines;
    Parking &m_parking;
    pid_t m_owner;
    const FileView::Shared m_view;
    Folder m_folder;
    Journal m_journal;
    bool m_isServed;

    std::deque<PendingCommand> m_commands;
    bool m_isBusy = false;
    bool m_isRunning = false;

    /** The job that the present command waits for. */
    std::unique_ptr<DiskJob> m_disk;
    std::unique_ptr<Engine> m_engine;
    Reach m_reach;
    /** Whether a list of the medium leads to the network. */
    bool m_isListFar = false;
    /** The input that the engine is opening, and the callback for its answer. */
    Journal::Input m_opening;
    Engine::Answered m_opened;
    /** Whether the engine has the medium. */
    bool m_isOpen = false;
    /** What the engine records into. */
    std::shared_ptr<OpenRecording> m_recording;
    std::optional<Journal::Input> m_input;
    State m_state = State::Idle;
    bool m_hasEnded = false;
    bool m_hasFailed = false;
    Speed m_speed;
    /** Whether the engine reported that its medium is not heard. */
    bool m_isSilent = false;
    /** Whether the engine took another speed than the one that it was asked for. */
    bool m_isSpeedTaken = false;
    /** Of the tracks near the current one. */
    std::map<unsigned, Kind> m_kinds;
    unsigned m_total = 0;
    TrackPosition m_position;
    /** Where the next engine begins instead of at the beginning. */
    std::optional<TrackPosition> m_resume;
    /** The settings that the engine got last. */
    Settings m_settings;

    /** How many engines died in a row with the medium of this URI. */
    int m_deaths = 0;
    std::string m_deathsUri;
};

} // namespace voro::renderer
