// The module devices.so: asks the sound server about its default devices.

#include <doctor/Devices.h>
#include <pulse/context.h>
#include <pulse/introspect.h>
#include <pulse/mainloop.h>

#include <chrono>
#include <cmath>
#include <memory>

namespace voro::doctor {

namespace {

constexpr std::chrono::microseconds Patience = std::chrono::seconds(2);

/** What is asked, and how many answers are still to come. */
struct Questions {
    Devices &devices;
    int open = 0;
};

template<typename Info>
void take(std::optional<Device> &device, const Info *info, int end, Questions &questions)
{
    if (info) {
        const auto volume = static_cast<double>(pa_cvolume_max(&info->volume));
        device = {QString::fromUtf8(info->description), info->mute != 0,
                  static_cast<int>(std::lround(volume * 100 / PA_VOLUME_NORM))};
    }
    questions.open -= end != 0;
}

void ask(pa_context *context, Questions &questions)
{
    pa_operation *const output = pa_context_get_sink_info_by_name(
        context, "@DEFAULT_SINK@",
        [](pa_context *, const pa_sink_info *info, int end, void *data) {
            auto *asked = static_cast<Questions *>(data);
            take(asked->devices.output, info, end, *asked);
        },
        &questions);
    pa_operation *const input = pa_context_get_source_info_by_name(
        context, "@DEFAULT_SOURCE@",
        [](pa_context *, const pa_source_info *info, int end, void *data) {
            auto *asked = static_cast<Questions *>(data);
            take(asked->devices.input, info, end, *asked);
        },
        &questions);
    for (pa_operation *operation : {output, input}) {
        if (operation) {
            ++questions.open;
            pa_operation_unref(operation);
        }
    }
}

/** Runs the loop until something is true; false when the server goes, or says nothing for too long. */
template<typename Condition>
bool runUntil(pa_mainloop *loop, pa_context *context, Condition condition)
{
    const auto end = std::chrono::steady_clock::now() + Patience;
    while (!condition()) {
        const auto rest = std::chrono::duration_cast<std::chrono::microseconds>(end - std::chrono::steady_clock::now());
        if (rest.count() <= 0 || !PA_CONTEXT_IS_GOOD(pa_context_get_state(context))
            || pa_mainloop_prepare(loop, static_cast<int>(rest.count())) < 0 || pa_mainloop_poll(loop) < 0
            || pa_mainloop_dispatch(loop) < 0) {
            return false;
        }
    }
    return true;
}

} // namespace

} // namespace voro::doctor

extern "C" Q_DECL_EXPORT void voroDefaultDevices(voro::doctor::Devices &devices)
{
    using namespace voro::doctor;
    const std::unique_ptr<pa_mainloop, decltype(&pa_mainloop_free)> loop(pa_mainloop_new(), &pa_mainloop_free);
    const std::unique_ptr<pa_context, decltype(&pa_context_unref)> context(
        pa_context_new(pa_mainloop_get_api(loop.get()), "voro doctor"), &pa_context_unref);
    Questions questions{devices};
    const auto isReady = [&] { return pa_context_get_state(context.get()) == PA_CONTEXT_READY; };
    if (pa_context_connect(context.get(), nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) == 0
        && runUntil(loop.get(), context.get(), isReady)) {
        ask(context.get(), questions);
        runUntil(loop.get(), context.get(), [&] { return questions.open == 0; });
    }
    pa_context_disconnect(context.get());
}
