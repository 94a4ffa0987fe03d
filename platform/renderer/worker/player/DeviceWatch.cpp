#include "DeviceWatch.h"

#include <pulse/glib-mainloop.h>
#include <pulse/pulseaudio.h>

#include <utility>

namespace voro::renderer {

DeviceWatch::DeviceWatch(std::function<void()> onLost) : m_onLost(std::move(onLost)) {}

DeviceWatch::~DeviceWatch()
{
    disconnect();
}

void DeviceWatch::watch(const std::string &sink)
{
    m_nextSink = sink;
    if (sink == m_sink) {
        return;
    }
    if (sink.empty()) {
        begin({});
        disconnect();
    } else if (!m_context) {
        begin(sink);
        connect();
    } else if (m_wasFound) {
        // The sound may have been moved because the device went.
        look();
    } else {
        begin(sink);
        look();
    }
}

void DeviceWatch::begin(const std::string &sink)
{
    m_sink = sink;
    m_port.clear();
    m_wasFound = false;
}

void DeviceWatch::connect()
{
    m_loop = pa_glib_mainloop_new(nullptr);
    m_context = pa_context_new(pa_glib_mainloop_get_api(m_loop), "voro-renderer");
    pa_context_set_state_callback(m_context, onContextState, this);
    pa_context_set_subscribe_callback(
        m_context,
        [](pa_context *context, pa_subscription_event_type_t event, uint32_t index, void *self) {
            onSinkEvent(context, event, index, self);
        },
        this);
    pa_context_connect(m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
}

void DeviceWatch::disconnect()
{
    if (m_context) {
        pa_context_set_state_callback(m_context, nullptr, nullptr);
        pa_context_set_subscribe_callback(m_context, nullptr, nullptr);
        pa_context_disconnect(m_context);
        pa_context_unref(std::exchange(m_context, nullptr));
        pa_glib_mainloop_free(std::exchange(m_loop, nullptr));
    }
}

void DeviceWatch::onContextState(pa_context *context, void *self)
{
    auto *watch = static_cast<DeviceWatch *>(self);
    const pa_context_state_t state = pa_context_get_state(context);
    if (state == PA_CONTEXT_READY) {
        if (pa_operation *operation = pa_context_subscribe(context, PA_SUBSCRIPTION_MASK_SINK, nullptr, nullptr)) {
            pa_operation_unref(operation);
        }
        watch->look();
    } else if (state == PA_CONTEXT_FAILED && watch->m_wasFound) {
        // The whole server went.
        watch->lose();
    }
}

void DeviceWatch::onSinkEvent(pa_context *, int, unsigned, void *self)
{
    static_cast<DeviceWatch *>(self)->look();
}

void DeviceWatch::look()
{
    if (m_sink.empty() || pa_context_get_state(m_context) != PA_CONTEXT_READY) {
        return;
    }
    m_isFound = false;
    pa_operation *operation = pa_context_get_sink_info_by_name(m_context, m_sink.c_str(), onSink, this);
    if (operation) {
        pa_operation_unref(operation);
    }
}

/** Called for the sink, if it is there, and then once more at the end. */
void DeviceWatch::onSink(pa_context *, const pa_sink_info *info, int isLast, void *self)
{
    auto *watch = static_cast<DeviceWatch *>(self);
    if (isLast != 0) {
        const bool isGone = !watch->m_isFound && watch->m_wasFound;
        watch->m_wasFound = watch->m_isFound;
        if (isGone) {
            watch->lose();
        } else if (watch->m_nextSink != watch->m_sink) {
            watch->begin(watch->m_nextSink);
            watch->look();
        }
        return;
    }
    watch->m_isFound = watch->m_sink == info->name;
    const std::string port = info->active_port ? info->active_port->name : "";
    bool isUnplugged = false;
    for (uint32_t i = 0; i < info->n_ports; ++i) {
        isUnplugged |= watch->m_port == info->ports[i]->name && info->ports[i]->available == PA_PORT_AVAILABLE_NO
                       && (port != watch->m_port || info->active_port == info->ports[i]);
    }
    const bool wasKnown = !watch->m_port.empty();
    watch->m_port = port;
    if (wasKnown && isUnplugged) {
        watch->lose();
    }
}

/** Reports the loss, but not from inside the server's callback, which must not lose its context. */
void DeviceWatch::lose()
{
    m_wasFound = false;
    const auto report = [](gpointer self) -> gboolean {
        auto *watch = static_cast<DeviceWatch *>(self);
        watch->m_loss.forget();
        watch->m_onLost();
        return G_SOURCE_REMOVE;
    };
    m_loss.reset(g_idle_add(report, this));
}

} // namespace voro::renderer
