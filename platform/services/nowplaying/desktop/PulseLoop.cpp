#include "PulseLoop.h"

#include <QtCore/QSocketNotifier>
#include <QtCore/QTimer>

#include <pulse/timeval.h>

#include <algorithm>

// libpulse leaves the types of events to whoever runs its loop.

namespace voro::nowplaying {

namespace {

/** What the three kinds of events share. */
template<typename Event, typename Destroyed>
struct PulseEvent {
    /** Calls back; an event that is freed by its own callback lives on until the event loop comes by. */
    template<typename Callback>
    void run(const Callback &callback)
    {
        isRunning = true;
        callback();
        isRunning = false;
        if (isFreed) {
            QTimer::singleShot(0, [this] { destroy(); });
        }
    }
    static void free(Event *event)
    {
        event->disable();
        event->isFreed = true;
        if (!event->isRunning) {
            event->destroy();
        }
    }
    static void setDestroyed(Event *event, Destroyed callback) { event->destroyed = callback; }
    void destroy()
    {
        Event *const event = static_cast<Event *>(this);
        if (destroyed) {
            destroyed(pulseLoop(), event, data);
        }
        delete event;
    }

    void *data = nullptr;
    Destroyed destroyed = nullptr;
    bool isRunning = false;
    bool isFreed = false;
};

int millisecondsUntil(const timeval *time)
{
    timeval now{};
    pa_gettimeofday(&now);
    const pa_usec_t wait = pa_timeval_cmp(time, &now) > 0 ? pa_timeval_diff(time, &now) : 0;
    return static_cast<int>(std::min<pa_usec_t>((wait + 999) / 1000, INT_MAX));
}

} // namespace

} // namespace voro::nowplaying

struct pa_io_event : voro::nowplaying::PulseEvent<pa_io_event, pa_io_event_destroy_cb_t> {
    explicit pa_io_event(int fd) : read(fd, QSocketNotifier::Read), write(fd, QSocketNotifier::Write) {}
    void enable(pa_io_event_flags_t flags)
    {
        // The end of a connection shows as something to read.
        read.setEnabled(flags & (PA_IO_EVENT_INPUT | PA_IO_EVENT_HANGUP));
        write.setEnabled(flags & PA_IO_EVENT_OUTPUT);
    }
    void disable() { enable(PA_IO_EVENT_NULL); }

    QSocketNotifier read;
    QSocketNotifier write;
};

struct pa_time_event : voro::nowplaying::PulseEvent<pa_time_event, pa_time_event_destroy_cb_t> {
    void restart(const timeval *time)
    {
        if (time) {
            timer.start(voro::nowplaying::millisecondsUntil(time));
        } else {
            disable();
        }
    }
    void disable() { timer.stop(); }

    QTimer timer;
};

struct pa_defer_event : voro::nowplaying::PulseEvent<pa_defer_event, pa_defer_event_destroy_cb_t> {
    void enable(bool isEnabled)
    {
        if (isEnabled) {
            timer.start(0);
        } else {
            disable();
        }
    }
    void disable() { timer.stop(); }

    QTimer timer;
};

namespace voro::nowplaying {

namespace {

pa_io_event *newIo(pa_mainloop_api *api, int fd, pa_io_event_flags_t flags, pa_io_event_cb_t callback, void *data)
{
    auto *const event = new pa_io_event(fd);
    event->data = data;
    const auto notify = [=](QSocketNotifier &notifier, pa_io_event_flags_t flag) {
        QObject::connect(&notifier, &QSocketNotifier::activated,
                         [=] { event->run([=] { callback(api, event, fd, flag, data); }); });
    };
    notify(event->read, PA_IO_EVENT_INPUT);
    notify(event->write, PA_IO_EVENT_OUTPUT);
    event->enable(flags);
    return event;
}

pa_time_event *newTime(pa_mainloop_api *api, const timeval *time, pa_time_event_cb_t callback, void *data)
{
    auto *const event = new pa_time_event;
    event->data = data;
    event->timer.setSingleShot(true);
    QObject::connect(&event->timer, &QTimer::timeout, [=] {
        timeval now{};
        pa_gettimeofday(&now);
        event->run([&] { callback(api, event, &now, data); });
    });
    event->restart(time);
    return event;
}

pa_defer_event *newDefer(pa_mainloop_api *api, pa_defer_event_cb_t callback, void *data)
{
    auto *const event = new pa_defer_event;
    event->data = data;
    QObject::connect(&event->timer, &QTimer::timeout, [=] { event->run([=] { callback(api, event, data); }); });
    event->enable(true);
    return event;
}

pa_mainloop_api makeLoop()
{
    pa_mainloop_api api{};
    api.io_new = newIo;
    api.io_enable = [](pa_io_event *event, pa_io_event_flags_t flags) { event->enable(flags); };
    api.io_free = pa_io_event::free;
    api.io_set_destroy = pa_io_event::setDestroyed;
    api.time_new = newTime;
    api.time_restart = [](pa_time_event *event, const timeval *time) { event->restart(time); };
    api.time_free = pa_time_event::free;
    api.time_set_destroy = pa_time_event::setDestroyed;
    api.defer_new = newDefer;
    api.defer_enable = [](pa_defer_event *event, int isEnabled) { event->enable(isEnabled != 0); };
    api.defer_free = pa_defer_event::free;
    api.defer_set_destroy = pa_defer_event::setDestroyed;
    api.quit = [](pa_mainloop_api *, int) {};
    return api;
}

} // namespace

pa_mainloop_api *pulseLoop()
{
    static pa_mainloop_api api = makeLoop();
    return &api;
}

} // namespace voro::nowplaying
