#pragma once

#include "Sounds.h"

#include <canberra.h>

#include <map>
#include <memory>
#include <string>

namespace voro::sound {

/** A connection to the sound server, made when it is needed and again when it was lost. Its calls wait for the server. */
class SoundServer {
public:
    /** Plays with the project's own files out of the folder. */
    explicit SoundServer(std::string folder) : m_folder(std::move(folder)) {}

    enum class Action {
        /** Gives the server the sound to keep. */
        Prepare,
        Play,
    };
    /** The result is empty, or a problem for people. */
    std::string_view perform(Action action, const Sound &sound);

private:
    struct Destroy {
        void operator()(ca_context *context) const { ca_context_destroy(context); }
        void operator()(ca_proplist *properties) const { ca_proplist_destroy(properties); }
    };
    using Properties = std::unique_ptr<ca_proplist, Destroy>;

    int connect();
    int tryEach(Action action, const Sound &sound);
    Properties properties(const Sound &sound, size_t source) const;

    const std::string m_folder;
    std::unique_ptr<ca_context, Destroy> m_context;
    /** Which of its sources a sound has turned out to come from: the number of an event, or Sound::events.size(). */
    std::map<const Sound *, size_t> m_sources;
};

} // namespace voro::sound
