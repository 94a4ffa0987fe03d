#include "FewPlugins.h"

#include <QtTest/QtTest>

#include <renderer/worker/gst/Gst.h>
#include <renderer/worker/pipeline/SinkWatch.h>
#include <renderer/worker/pipeline/Transport.h>

#include <future>
#include <optional>

using namespace voro::renderer;

namespace {

/** The position that the element reports, in milliseconds; none while a pipeline flushes. */
std::optional<int> reported;

/** An element that takes every seek. */
Owned<GstElement> makeSeekableElement()
{
    const auto initialize = [](gpointer type, gpointer) {
        GST_ELEMENT_CLASS(type)->send_event = [](GstElement *, GstEvent *event) -> gboolean {
            gst_event_unref(event);
            return TRUE;
        };
        GST_ELEMENT_CLASS(type)->query = [](GstElement *, GstQuery *query) -> gboolean {
            gst_query_set_position(query, GST_FORMAT_TIME, reported.value_or(0) * static_cast<gint64>(GST_MSECOND));
            return reported.has_value();
        };
    };
    static const GType type =
        g_type_register_static_simple(GST_TYPE_ELEMENT, "SeekableElement", sizeof(GstElementClass), initialize,
                                      sizeof(GstElement), nullptr, GTypeFlags());
    return Owned<GstElement>(GST_ELEMENT(gst_object_ref_sink(g_object_new(type, nullptr))));
}

} // namespace

/** Running and seeking one pipeline, and what its sink does. */
class tst_Transport : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { startGStreamerWith(m_plugins, {}); }

    void position_isTheTarget_untilItPlaysFromThere()
    {
        const Owned<GstElement> pipeline = makeSeekableElement();
        Succession succession;
        Transport transport(pipeline.get(), succession);
        transport.run();
        QVERIFY(transport.seek({5000, NormalSpeed}));
        QCOMPARE(transport.position(), 5000);
        // The second report may be of an earlier seek.
        transport.seekDone();
        transport.seekDone();
        QCOMPARE(transport.position(), 5000);
        // Held after it has played on, and sought in while it is held.
        reported = 7000;
        transport.hold();
        QCOMPARE(transport.position(), 7000);
        QVERIFY(transport.seek({3000, NormalSpeed}));
        transport.seekDone();
        QCOMPARE(transport.position(), 3000);
        transport.hold();
        QCOMPARE(transport.position(), 3000);
        reported.reset();
        transport.reset();
        QCOMPARE(transport.position(), 0);
        gst_element_set_state(pipeline.get(), GST_STATE_NULL);
    }

    void streamIsExchanged_fromItsFormatOn_toTheNextItem()
    {
        const Owned<GstElement> sink = makeSeekableElement();
        const Owned<GstPad> pad(GST_PAD(gst_object_ref_sink(gst_pad_new("src", GST_PAD_SRC))));
        SinkWatch watch;
        watch.watch(pad.get());
        watch.begin(sink.get(), Ahead::Little);
        gst_pad_set_active(pad.get(), TRUE);
        const auto isExchangedElsewhere = [&watch] {
            return std::async(std::launch::async, [&watch] { return watch.isExchangedElsewhere(); }).get();
        };
        gst_pad_push_event(pad.get(), gst_event_new_stream_start("one"));
        QVERIFY(!isExchangedElsewhere());
        const Owned<GstCaps> format(gst_caps_new_empty_simple("audio/x-raw"));
        gst_pad_push_event(pad.get(), gst_event_new_caps(format.get()));
        QVERIFY(isExchangedElsewhere());
        // The thread that exchanges it hears nothing untrue.
        QVERIFY(!watch.isExchangedElsewhere());
        GstSegment segment;
        gst_segment_init(&segment, GST_FORMAT_TIME);
        gst_pad_push_event(pad.get(), gst_event_new_segment(&segment));
        QVERIFY(!isExchangedElsewhere());
    }

private:
    const QTemporaryDir m_plugins;
};

QTEST_APPLESS_MAIN(tst_Transport)

#include "tst_transport.moc"
