#pragma once

#include <renderer/worker/gst/Gst.h>

#include <functional>
#include <memory>
#include <string>

struct pa_context;
struct pa_glib_mainloop;
struct pa_sink_info;

namespace voro::renderer {

/**
 * Notices when the sound device that is played to goes away: its sink is removed, or headphones are pulled out of it.
 */
class DeviceWatch {
public:
    explicit DeviceWatch(std::function<void()> onLost);
    ~DeviceWatch();
    DeviceWatch(const DeviceWatch &) = delete;
    DeviceWatch &operator=(const DeviceWatch &) = delete;

    /** Watches the sink of this name from now on; none with an empty name. */
    void watch(const std::string &sink);

private:
    static void onContextState(pa_context *context, void *self);
    static void onSinkEvent(pa_context *context, int event, unsigned index, void *self);
    static void onSink(pa_context *context, const pa_sink_info *info, int isLast, void *self);
    void connect();
    void disconnect();
    void look();
    void begin(const std::string &sink);
    void lose();

    std::function<void()> m_onLost;
    std::string m_sink;
    /** The sink that is watched as soon as it is known that the former one is still there. */
    std::string m_nextSink;
    /** The plug of the sink that sound goes to, empty while not known. */
    std::string m_port;
    bool m_isFound = false;
    bool m_wasFound = false;
    MainLoopSource m_loss;
    pa_glib_mainloop *m_loop = nullptr;
    pa_context *m_context = nullptr;
};

} // namespace voro::renderer
