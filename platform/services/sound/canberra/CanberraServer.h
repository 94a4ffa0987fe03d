#pragma once

#include <canberra.h>
#include <services/sound/SoundServer.h>

#include <map>

namespace voro::sound {

/** Plays the sound theme's sounds, and the project's own files where it has none. */
class CanberraServer : public SoundServer {
public:
    explicit CanberraServer(std::string folder) : m_folder(std::move(folder)) {}

    std::string_view perform(Action action, const Sound &sound) override;

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
