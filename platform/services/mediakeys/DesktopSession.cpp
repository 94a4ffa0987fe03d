#include "DesktopSession.h"

#include <dlfcn.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>

namespace voro::mediakeys {

namespace {

struct Free {
    void operator()(char *text) const { std::free(text); }
};
using Text = std::unique_ptr<char, Free>;

/** Asks a function of the login manager's library, which is loaded only now because it links much. */
template<typename Subject>
Text ask(const char *function, Subject subject)
{
    static void *const library = dlopen("libsystemd.so.0", RTLD_LAZY | RTLD_LOCAL);
    using Ask = int(Subject, char **);
    const auto call = library ? reinterpret_cast<Ask *>(dlsym(library, function)) : nullptr;
    char *answer = nullptr;
    return Text(call && call(subject, &answer) >= 0 ? answer : nullptr);
}

} // namespace

// A daemon that the service manager started may be older than the session and know nothing of it by its environment.
bool isDesktopSession()
{
    if (const char *desktop = std::getenv("XDG_CURRENT_DESKTOP"); desktop && *desktop) {
        return true;
    }
    const Text session = ask("sd_uid_get_display", getuid());
    return session && ask<const char *>("sd_session_get_desktop", session.get());
}

} // namespace voro::mediakeys
