#include "PulseServer.h"

#include <QtTest/QtTest>

#include <pulse/context.h>
#include <pulse/mainloop.h>
#include <pulse/stream.h>

#include <functional>
#include <optional>

namespace {

/** A stream that plays silence, made as GStreamer's sink makes its own. */
class Silence {
public:
    Silence()
    {
        pa_context_connect(m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
        iterateUntil([this] { return pa_context_get_state(m_context) == PA_CONTEXT_READY; });
        m_stream = pa_stream_new(m_context, "silence", &Format, nullptr);
        const pa_buffer_attr attributes{UINT32_MAX, 4 * Piece, 0, Piece, UINT32_MAX};
        pa_stream_connect_playback(m_stream, nullptr, &attributes,
                                   static_cast<pa_stream_flags_t>(PA_STREAM_INTERPOLATE_TIMING
                                                                  | PA_STREAM_AUTO_TIMING_UPDATE
                                                                  | PA_STREAM_ADJUST_LATENCY | PA_STREAM_START_CORKED),
                                   nullptr, nullptr);
        iterateUntil([this] { return pa_stream_get_state(m_stream) == PA_STREAM_READY; });
    }
    ~Silence()
    {
        pa_stream_unref(m_stream);
        pa_context_disconnect(m_context);
        pa_context_unref(m_context);
        pa_mainloop_free(m_loop);
    }

    void pause(bool isPaused) { forget(pa_stream_cork(m_stream, isPaused, nullptr, nullptr)); }
    /** Asks the server how much it has played, without waiting for the answer. */
    void askForTime() { forget(pa_stream_update_timing_info(m_stream, nullptr, nullptr)); }
    /** In microseconds; none when it is not known. */
    std::optional<pa_usec_t> time() const
    {
        pa_usec_t time = 0;
        return pa_stream_get_time(m_stream, &time) == 0 ? std::optional(time) : std::nullopt;
    }
    /** Plays on until a time. */
    void playUntil(pa_usec_t end)
    {
        iterateUntil([this, end] { return time().value_or(0) >= end; });
    }

private:
    static constexpr pa_sample_spec Format{PA_SAMPLE_FLOAT32NE, 48'000, 2};
    /** In bytes, half a second. */
    static constexpr uint32_t Piece = 24'000 * 2 * sizeof(float);

    static void forget(pa_operation *operation) { pa_operation_unref(operation); }
    void iterateUntil(const std::function<bool()> &isReached)
    {
        constexpr int Step = 1'000;
        const QDeadlineTimer limit(20'000);
        while (!isReached()) {
            if (limit.hasExpired()) {
                qFatal("nothing comes from the sound server");
            }
            pa_mainloop_prepare(m_loop, Step);
            pa_mainloop_poll(m_loop);
            pa_mainloop_dispatch(m_loop);
            while (m_stream && pa_stream_get_state(m_stream) == PA_STREAM_READY
                   && pa_stream_writable_size(m_stream) >= Piece) {
                pa_stream_write(m_stream, m_piece.constData(), Piece, nullptr, 0, PA_SEEK_RELATIVE);
            }
        }
    }

    pa_mainloop *m_loop = pa_mainloop_new();
    pa_context *m_context = pa_context_new(pa_mainloop_get_api(m_loop), "test");
    pa_stream *m_stream = nullptr;
    const QByteArray m_piece = QByteArray(Piece, '\0');
};

} // namespace

class tst_SoundCalls : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void timeOfStream_isOneThatItMayHavePlayed()
    {
        constexpr pa_usec_t Step = 100'000;
        PulseServer server;
        Silence silence;
        silence.pause(false);
        silence.playUntil(Step);
        pa_usec_t time = Step;
        for (int round = 0; round < 4; ++round) {
            // A server that answers late seems to play slowly.
            server.suspend();
            silence.askForTime();
            silence.playUntil(time + Step);
            server.resume();
            silence.playUntil(time + 4 * Step);
            time += 4 * Step;
            silence.pause(true);
            silence.pause(false);
            // A loaded machine may be late; the fault says years.
            QVERIFY(silence.time().value_or(0) < time + 600 * Step);
        }
    }
};

QTEST_GUILESS_MAIN(tst_SoundCalls)

#include "tst_sound_calls.moc"
