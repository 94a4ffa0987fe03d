#include "SinkVolume.h"

#include "PulseLoop.h"

#include <pulse/operation.h>

#include <cmath>

namespace voro::nowplaying {

namespace {

constexpr auto DefaultSink = "@DEFAULT_SINK@";

int toPercent(pa_volume_t volume)
{
    return static_cast<int>(std::lround(volume * 100.0 / PA_VOLUME_NORM));
}

pa_volume_t fromPercent(int percent)
{
    return pa_volume_t(std::lround(percent * static_cast<double>(PA_VOLUME_NORM) / 100));
}

/** The volume after the command, in percent. One above 100 stays, but is not raised further. */
int levelAfter(const VolumeCommand &command, int level)
{
    switch (command.kind) {
    case VolumeCommand::Up:
        return std::max(level, std::min(level + command.value, 100));
    case VolumeCommand::Down:
        return std::max(level - command.value, 0);
    default:
        return command.value;
    }
}

/** Lets an operation run by itself. */
bool start(pa_operation *operation)
{
    if (operation) {
        pa_operation_unref(operation);
    }
    return operation != nullptr;
}

} // namespace

void SinkVolume::ContextDeleter::operator()(pa_context *context) const
{
    pa_context_set_state_callback(context, nullptr, nullptr);
    pa_context_set_subscribe_callback(context, nullptr, nullptr);
    pa_context_disconnect(context);
    pa_context_unref(context);
}

SinkVolume::~SinkVolume() = default;

double SinkVolume::volume() const
{
    return m_sink ? std::min(1.0, toPercent(pa_cvolume_max(&m_sink->volume)) / 100.0) : 1.0;
}

void SinkVolume::watch()
{
    if (m_context) {
        return;
    }
    m_context.reset(pa_context_new(pulseLoop(), "vorod"));
    pa_context_set_state_callback(
        m_context.get(), [](pa_context *, void *self) { static_cast<SinkVolume *>(self)->contextChanged(); }, this);
    pa_context_set_subscribe_callback(
        m_context.get(),
        [](pa_context *, pa_subscription_event_type_t, uint32_t, void *self) {
            static_cast<SinkVolume *>(self)->askForSink();
        },
        this);
    if (pa_context_connect(m_context.get(), nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) {
        fail("there is no sound server");
    }
}

void SinkVolume::contextChanged()
{
    if (!m_context) {
        return;
    }
    switch (pa_context_get_state(m_context.get())) {
    case PA_CONTEXT_READY:
        start(pa_context_subscribe(m_context.get(),
                                   pa_subscription_mask_t(PA_SUBSCRIPTION_MASK_SINK | PA_SUBSCRIPTION_MASK_SERVER),
                                   nullptr, nullptr));
        askForSink();
        break;
    case PA_CONTEXT_FAILED:
    case PA_CONTEXT_TERMINATED:
        fail("there is no sound server");
        break;
    default:
        break;
    }
}

// The server went or never was there; it is looked for again when the volume is needed.
void SinkVolume::fail(const QString &problem)
{
    m_context.reset();
    m_sink.reset();
    const auto waiting = std::exchange(m_waiting, {});
    const auto sent = std::exchange(m_sent, {});
    for (const Desktop::Answered &done : sent) {
        done(problem);
    }
    for (const Waiting &command : waiting) {
        command.done(problem);
    }
}

void SinkVolume::askForSink()
{
    start(pa_context_get_sink_info_by_name(
        m_context.get(), DefaultSink,
        [](pa_context *, const pa_sink_info *info, int end, void *self) {
            static_cast<SinkVolume *>(self)->sinkReported(info, end);
        },
        this));
}

void SinkVolume::sinkReported(const pa_sink_info *info, int end)
{
    if (info && m_sent.empty()) {
        m_sink = {info->volume, info->mute != 0};
        Q_EMIT changed();
    }
    if (end == 0) {
        return;
    }
    if (end < 0) {
        m_sink.reset();
    }
    for (const Waiting &command : std::exchange(m_waiting, {})) {
        carryOut(command.command, command.done);
    }
}

void SinkVolume::change(const VolumeCommand &command, const Desktop::Answered &done)
{
    if (m_sink) {
        carryOut(command, done);
        return;
    }
    m_waiting.push_back({command, done});
    if (m_context && pa_context_get_state(m_context.get()) == PA_CONTEXT_READY) {
        askForSink();
    } else {
        watch();
    }
}

void SinkVolume::carryOut(const VolumeCommand &command, const Desktop::Answered &done)
{
    if (!m_sink) {
        done("there is no sound device");
        return;
    }
    const auto answer = [](pa_context *, int isGood, void *self) {
        static_cast<SinkVolume *>(self)->acknowledged(isGood != 0);
    };
    bool isSent = false;
    if (command.kind == VolumeCommand::Mute) {
        m_sink->isMuted = command.value != 0;
        isSent = start(pa_context_set_sink_mute_by_name(m_context.get(), DefaultSink, m_sink->isMuted, answer, this));
    } else {
        pa_cvolume &volume = m_sink->volume;
        const int level = toPercent(pa_cvolume_max(&volume));
        const int after = levelAfter(command, level);
        if (after != level || command.kind == VolumeCommand::Set) {
            pa_cvolume_scale(&volume, fromPercent(after));
        }
        isSent = start(pa_context_set_sink_volume_by_name(m_context.get(), DefaultSink, &volume, answer, this));
    }
    if (!isSent) {
        done("the sound server refused");
        return;
    }
    m_sent.push_back(done);
    Q_EMIT changed();
}

void SinkVolume::acknowledged(bool isGood)
{
    const Desktop::Answered done = m_sent.front();
    m_sent.pop_front();
    if (m_sent.empty()) {
        askForSink();
    }
    done(isGood ? QString() : QStringLiteral("the sound server refused"));
}

} // namespace voro::nowplaying
