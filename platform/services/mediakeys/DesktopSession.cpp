#include "DesktopSession.h"

#include <systemd/sd-login.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>

namespace voro::mediakeys {

namespace {

struct Free {
    void operator()(char *text) const { std::free(text); }
};
using Text = std::unique_ptr<char, Free>;

template<typename Function, typename Subject>
Text ask(Function function, Subject subject)
{
    char *answer = nullptr;
    return Text(function(subject, &answer) >= 0 ? answer : nullptr);
}

} // namespace

// A daemon that the service manager started may be older than the session and know nothing of it by its environment.
bool isDesktopSession()
{
    if (const char *desktop = std::getenv("XDG_CURRENT_DESKTOP"); desktop && *desktop) {
        return true;
    }
    const Text session = ask(sd_uid_get_display, getuid());
    return session && ask(sd_session_get_desktop, static_cast<const char *>(session.get()));
}

} // namespace voro::mediakeys
