#include "FewPlugins.h"

#include <QtTest/QtTest>

#include <renderer/worker/pipeline/DecodedSound.h>

#include <thread>

using namespace voro::renderer;

namespace {

/** What came to the queue. */
struct Received {
    gsize bytes = 0;
    GstClockTime end = 0;
    bool isInOrder = true;
};

GstFlowReturn receive(GstPad *pad, GstObject *, GstBuffer *buffer)
{
    auto *received = static_cast<Received *>(gst_pad_get_element_private(pad));
    received->isInOrder = received->isInOrder && GST_BUFFER_PTS(buffer) == received->end;
    received->bytes += gst_buffer_get_size(buffer);
    received->end = GST_BUFFER_PTS(buffer) + GST_BUFFER_DURATION(buffer);
    gst_buffer_unref(buffer);
    return GST_FLOW_OK;
}

} // namespace

class tst_DecodedSound : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { startGStreamerWith(m_plugins, {}); }

    /** As when a medium has been read to its end while its last sound is still being decoded. */
    void passedOnByAnotherThread_comesWholeAndInOrder()
    {
        constexpr int Buffers = 60'000;
        constexpr gsize Size = 480;
        constexpr GstClockTime Duration = 10 * GST_MSECOND;
        DecodedSound sound;
        Received received;
        const Owned<GstPad> output(GST_PAD(gst_object_ref_sink(gst_pad_new("src", GST_PAD_SRC))));
        const Owned<GstPad> queue(GST_PAD(gst_object_ref_sink(gst_pad_new("sink", GST_PAD_SINK))));
        gst_pad_set_chain_function(queue.get(), receive);
        gst_pad_set_element_private(queue.get(), &received);
        sound.watch(output.get());
        sound.begin(Ahead::Much);
        gst_pad_link(output.get(), queue.get());
        gst_pad_set_active(queue.get(), TRUE);
        gst_pad_set_active(output.get(), TRUE);
        GstSegment segment;
        gst_segment_init(&segment, GST_FORMAT_TIME);
        gst_pad_push_event(output.get(), gst_event_new_stream_start("sound"));
        gst_pad_push_event(output.get(), gst_event_new_segment(&segment));

        std::jthread other([&](const std::stop_token &stop) {
            while (!stop.stop_requested()) {
                sound.passOn();
                std::this_thread::yield();
            }
        });
        for (int i = 0; i < Buffers; ++i) {
            GstBuffer *buffer = gst_buffer_new_allocate(nullptr, Size, nullptr);
            GST_BUFFER_PTS(buffer) = static_cast<GstClockTime>(i) * Duration;
            GST_BUFFER_DURATION(buffer) = Duration;
            QCOMPARE(gst_pad_push(output.get(), buffer), GST_FLOW_OK);
        }
        other.request_stop();
        other.join();
        sound.passOn();
        QVERIFY(received.isInOrder);
        QCOMPARE(received.bytes, Buffers * Size);
    }

private:
    const QTemporaryDir m_plugins;
};

QTEST_GUILESS_MAIN(tst_DecodedSound)
#include "tst_decoded_sound.moc"
