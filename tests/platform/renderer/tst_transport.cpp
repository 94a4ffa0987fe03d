#include <QtTest/QtTest>

#include <renderer/worker/gst/Gst.h>
#include <renderer/worker/pipeline/Transport.h>

using namespace voro::renderer;

/** Running and seeking one pipeline. */
class tst_Transport : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void position_isTheTarget_whileThePipelineHasNone()
    {
        gst_init(nullptr, nullptr);
        const Owned<GstElement> pipeline(gst_parse_launch("audiotestsrc name=source ! fakesink sync=true", nullptr));
        gst_element_set_state(pipeline.get(), GST_STATE_PLAYING);
        QCOMPARE(gst_element_get_state(pipeline.get(), nullptr, nullptr, GST_CLOCK_TIME_NONE),
                 GST_STATE_CHANGE_SUCCESS);
        Succession succession;
        Transport transport(pipeline.get(), succession);
        transport.run();
        // Nothing comes to the sink any more.
        const Owned<GstElement> source(gst_bin_get_by_name(GST_BIN(pipeline.get()), "source"));
        const Owned<GstPad> pad(gst_element_get_static_pad(source.get(), "src"));
        gst_pad_add_probe(
            pad.get(), GST_PAD_PROBE_TYPE_BLOCK_DOWNSTREAM,
            [](GstPad *, GstPadProbeInfo *, gpointer) { return GST_PAD_PROBE_OK; }, nullptr, nullptr);
        QVERIFY(transport.seek({5000, NormalSpeed}));
        QCOMPARE(transport.position(), 5000);
        // The end of an earlier seek, reported once more.
        transport.seekDone();
        QCOMPARE(transport.position(), 5000);
        gst_element_set_state(pipeline.get(), GST_STATE_NULL);
    }
};

QTEST_APPLESS_MAIN(tst_Transport)

#include "tst_transport.moc"
