#include <voro/device/DisplayInfo.h>

#include <dlfcn.h>
#include <xcb/randr.h>
#include <xcb/xcb.h>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <mutex>

namespace voro::device {

namespace {

struct Displays {
    int primary = 0;
    int secondary = 1;
};

/**
 * The few functions of the display server's client library, loaded only where there is a display: an application that
 * plays audio on a device without one shall not carry them.
 */
class Xcb {
public:
    static const Xcb *instance()
    {
        static const std::unique_ptr<const Xcb> xcb = load();
        return xcb.get();
    }

    decltype(&xcb_connect) connect;
    decltype(&xcb_connection_has_error) hasError;
    decltype(&xcb_disconnect) disconnect;
    decltype(&xcb_get_setup) setup;
    decltype(&xcb_setup_roots_iterator) roots;
    decltype(&xcb_get_extension_data) extensionData;
    xcb_extension_t *randr;
    decltype(&xcb_randr_get_monitors) getMonitors;
    decltype(&xcb_randr_get_monitors_reply) monitorsReply;
    decltype(&xcb_randr_get_monitors_monitors_iterator) monitors;
    decltype(&xcb_randr_monitor_info_next) nextMonitor;

private:
    static std::unique_ptr<const Xcb> load()
    {
        void *base = dlopen("libxcb.so.1", RTLD_NOW | RTLD_LOCAL);
        void *randr = dlopen("libxcb-randr.so.0", RTLD_NOW | RTLD_LOCAL);
        if (!base || !randr) {
            return nullptr;
        }
        auto xcb = std::make_unique<Xcb>();
        bool ok = true;
        const auto resolve = [&ok](void *library, const char *name, auto &function) {
            function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(dlsym(library, name));
            ok = ok && function;
        };
        resolve(base, "xcb_connect", xcb->connect);
        resolve(base, "xcb_connection_has_error", xcb->hasError);
        resolve(base, "xcb_disconnect", xcb->disconnect);
        resolve(base, "xcb_get_setup", xcb->setup);
        resolve(base, "xcb_setup_roots_iterator", xcb->roots);
        resolve(base, "xcb_get_extension_data", xcb->extensionData);
        resolve(randr, "xcb_randr_id", xcb->randr);
        resolve(randr, "xcb_randr_get_monitors", xcb->getMonitors);
        resolve(randr, "xcb_randr_get_monitors_reply", xcb->monitorsReply);
        resolve(randr, "xcb_randr_get_monitors_monitors_iterator", xcb->monitors);
        resolve(randr, "xcb_randr_monitor_info_next", xcb->nextMonitor);
        return ok ? std::move(xcb) : nullptr;
    }
};

Displays query(const Xcb &xcb)
{
    Displays displays;
    int screen = 0;
    const std::unique_ptr<xcb_connection_t, decltype(xcb.disconnect)> connection(xcb.connect(nullptr, &screen),
                                                                                 xcb.disconnect);
    if (xcb.hasError(connection.get())) {
        return displays;
    }
    const xcb_query_extension_reply_t *extension = xcb.extensionData(connection.get(), xcb.randr);
    if (!extension || !extension->present) {
        return displays;
    }

    const xcb_window_t root = xcb.roots(xcb.setup(connection.get())).data->root;
    const std::unique_ptr<xcb_randr_get_monitors_reply_t, decltype(&free)> reply(
        xcb.monitorsReply(connection.get(), xcb.getMonitors(connection.get(), root, 1), nullptr), free);
    if (!reply) {
        return displays;
    }
    int index = 0;
    for (auto monitor = xcb.monitors(reply.get()); monitor.rem; xcb.nextMonitor(&monitor), ++index) {
        if (monitor.data->primary) {
            displays.primary = index;
        }
    }
    displays.secondary = displays.primary == 0 ? 1 : 0;
    return displays;
}

/** A player asks at every preparation; screens come and go seldom. */
Displays displays()
{
    using Clock = std::chrono::steady_clock;
    static std::mutex mutex;
    static Displays known;
    static Clock::time_point validUntil;

    // Another display protocol names no primary screen: its screens count in the order it shows them.
    if (!getenv("DISPLAY")) {
        return {};
    }
    const std::lock_guard lock(mutex);
    if (const auto now = Clock::now(); now >= validUntil) {
        const Xcb *xcb = Xcb::instance();
        known = xcb ? query(*xcb) : Displays();
        validUntil = now + std::chrono::seconds(2);
    }
    return known;
}

} // namespace

int DisplayInfo::primaryDisplayId()
{
    return displays().primary;
}

int DisplayInfo::secondaryDisplayId()
{
    return displays().secondary;
}

} // namespace voro::device
