#pragma once

#include "RecordingFile.h"

#include <renderer/common/Parameters.h>
#include <renderer/common/Reach.h>
#include <renderer/common/WorkerMessages.h>

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>

namespace voro::renderer {

/** All settings of a context. An engine gets them at once, be it the first one or one that follows a crash. */
class Journal {
public:
    struct Output {
        OutputType type;
        std::string url;
        Parameters parameters;
        /** Of an output of the type File. */
        std::shared_ptr<RecordingFile> file;
    };
    struct Input {
        Medium medium;
        InputType type = InputType::AutoList;
        bool isRecording() const { return type == InputType::Track; }
    };

    /**
     * Adds an output, which replaces one of the same type; the failure says why it cannot be. One that draws brings
     * the session of its windows.
     */
    Result attachOutput(const std::string &url, OutputType type, const Session &session, int &id);
    /** The same for an output of the type File, with a path that was inspected, and its key. */
    Result attachFile(const std::string &url, const std::string &path, const std::string &key, int &id);
    Result detachOutput(int id);
    /** Merges parameters into an output's; they are not taken over when one of them is bad. */
    Result setOutput(int id, const Parameters &parameters);
    Result setContext(const Parameters &parameters);
    Result setInput(const Parameters &parameters);
    /** Replaces a track's parameters; track 0 holds the next input's. */
    Result setTrack(unsigned track, const Parameters &parameters);
    const Parameters &inputParameters() const { return m_inputParameters; }
    const std::map<unsigned, Parameters> &tracks() const { return m_tracks; }

    /** All of it as attribute lines, and back. An output whose file somebody else has is left out. */
    std::string toText() const;
    void restore(const pps::Message &message);

    /** The first parameters of track 1 of an input of that type. */
    Parameters firstTrack(InputType type) const;

    /** The file that is recorded into, null without such an output. */
    RecordingFile *file() const;
    /** Whether an output is that file. */
    bool isFile(int id) const;
    /** Whether an output shows something on a screen. */
    bool isScreen(int id) const;
    /** Whether there can be an input like that with the present outputs. */
    Result checkInput(const Input &input) const;

    /** Whether there is an output for pictures. */
    bool hasVideo() const { return output(OutputType::Video) != nullptr; }
    bool hasCaptions() const { return output(OutputType::Captions) != nullptr; }
    /** The places that an engine has to reach for an input; those in lists come on top. */
    Reach reachFor(const Input &input) const;
    /** The frame queues that outputs show in. */
    std::set<std::string> frameQueues() const;

    /** Has an engine open the input. */
    requests::Open openRequest(const Input &input, Speed speed, const TrackPosition &start) const;
    /** Every setting that a playing engine can change. */
    Settings settings() const;

private:
    int replaceOutput(Output output);
    const Output *output(OutputType type) const;
    void restoreOutput(int id, const pps::Message &output);
    /** The window of an output for pictures, if there is one. */
    std::optional<std::string> window(OutputType type) const;

    std::map<int, Output> m_outputs;
    int m_nextOutput = 0;
    Session m_session;
    Parameters m_context;
    Parameters m_inputParameters;
    std::map<unsigned, Parameters> m_tracks;
};

} // namespace voro::renderer
