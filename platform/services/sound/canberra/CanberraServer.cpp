#include "CanberraServer.h"

namespace voro::sound {

std::string_view CanberraServer::perform(Action action, const Sound &sound)
{
    int error = CA_ERROR_NOTAVAILABLE;
    bool isConnected = false;
    // A server that went shows only when it is asked.
    for (int attempt = 0; attempt < 2; ++attempt) {
        error = m_context ? CA_SUCCESS : connect();
        isConnected = error == CA_SUCCESS;
        if (error == CA_SUCCESS) {
            error = tryEach(action, sound);
        }
        if (error == CA_SUCCESS || error == CA_ERROR_NOTFOUND) {
            break;
        }
        m_context.reset();
    }
    if (error == CA_SUCCESS) {
        return {};
    }
    return isConnected ? ca_strerror(error) : NoServer;
}

int CanberraServer::connect()
{
    ca_context *context = nullptr;
    int error = ca_context_create(&context);
    if (error != CA_SUCCESS) {
        return error;
    }
    m_context.reset(context);
    ca_context_set_driver(context, "pulse");
    ca_context_change_props(context, CA_PROP_APPLICATION_NAME, "System Sounds", CA_PROP_CANBERRA_XDG_THEME_NAME,
                            "freedesktop", nullptr);
    error = ca_context_open(context);
    if (error != CA_SUCCESS) {
        m_context.reset();
    }
    return error;
}

int CanberraServer::tryEach(Action action, const Sound &sound)
{
    int error = CA_ERROR_NOTFOUND;
    const auto known = m_sources.find(&sound);
    for (size_t source = known == m_sources.end() ? 0 : known->second; source <= sound.events.size(); ++source) {
        const Properties wanted = properties(sound, source);
        if (!wanted) {
            continue;
        }
        error = action == Action::Play ? ca_context_play_full(m_context.get(), 0, wanted.get(), nullptr, nullptr)
                                       : ca_context_cache_full(m_context.get(), wanted.get());
        if (error == CA_SUCCESS) {
            m_sources[&sound] = source;
        }
        if (error != CA_ERROR_NOTFOUND) {
            break;
        }
    }
    return error;
}

CanberraServer::Properties CanberraServer::properties(const Sound &sound, size_t source) const
{
    ca_proplist *created = nullptr;
    const bool isFile = source == sound.events.size();
    if ((!isFile && !sound.events[source]) || ca_proplist_create(&created) != CA_SUCCESS) {
        return nullptr;
    }
    Properties properties(created);
    // The server keeps sounds by this name for all its clients.
    const std::string event = isFile ? "voro-" + std::string(sound.name) : sound.events[source];
    ca_proplist_sets(created, CA_PROP_EVENT_ID, event.c_str());
    if (isFile) {
        ca_proplist_sets(created, CA_PROP_MEDIA_FILENAME, (m_folder + '/' + std::string(sound.name) + ".wav").c_str());
    }
    ca_proplist_sets(created, CA_PROP_CANBERRA_CACHE_CONTROL, "permanent");
    // Without a role it gets that of event sounds, which can be muted as a whole.
    if (sound.isAlwaysHeard) {
        ca_proplist_sets(created, CA_PROP_MEDIA_ROLE, "camera");
    }
    return properties;
}

} // namespace voro::sound

extern "C" __attribute__((visibility("default"))) voro::sound::SoundServer *
voroMakeSoundServer(const std::string &folder)
{
    return new voro::sound::CanberraServer(folder);
}
