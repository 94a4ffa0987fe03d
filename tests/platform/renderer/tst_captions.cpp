#include "FewPlugins.h"

#include <QtTest/QtTest>

#include <renderer/worker/captions/Captions.h>
#include <renderer/worker/gst/Gst.h>
#include <Rows.h>

#include <functional>
#include <thread>

using namespace voro::renderer;

namespace {

constexpr GstClockTime Duration = 20 * GST_MSECOND;

/** What an overlay was told to draw, and who wants to know. */
QByteArray drawn;
std::function<void()> onChange;

/** An element with the property "text". */
GstElement *makeOverlay()
{
    const auto initialize = [](gpointer type, gpointer) {
        G_OBJECT_CLASS(type)->set_property = [](GObject *, guint, const GValue *value, GParamSpec *) {
            drawn = g_value_get_string(value);
            onChange();
        };
        g_object_class_install_property(G_OBJECT_CLASS(type), 1,
                                        g_param_spec_string("text", nullptr, nullptr, nullptr, G_PARAM_WRITABLE));
    };
    static const GType Type = g_type_register_static_simple(GST_TYPE_ELEMENT, "Overlay", sizeof(GstElementClass),
                                                            initialize, sizeof(GstElement), nullptr, GTypeFlags());
    return GST_ELEMENT(gst_object_ref_sink(g_object_new(Type, nullptr)));
}

/** A pipeline of captions alone, and what they draw with. */
class Scene {
public:
    Scene()
    {
        drawn.clear();
        onChange = [] {};
        gst_bin_add(GST_BIN(m_pipeline.get()), GST_ELEMENT(gst_object_ref(captions.element())));
        captions.setOverlay(m_overlay.get());
        const Owned<GstPad> sink(gst_element_get_static_pad(captions.element(), "sink"));
        gst_pad_link(m_source.get(), sink.get());
        gst_pad_set_active(m_source.get(), TRUE);
        setRunning(true);
    }
    ~Scene()
    {
        onChange = [] {};
        gst_element_set_state(m_pipeline.get(), GST_STATE_NULL);
    }

    void setRunning(bool isRunning)
    {
        gst_element_set_state(m_pipeline.get(), isRunning ? GST_STATE_PLAYING : GST_STATE_PAUSED);
        captions.setRunning(isRunning);
    }
    /** Has a text taken at once that ends after Duration at the rate; posted when this returns. */
    void post(const char *text, double rate)
    {
        std::thread streaming([&] {
            gst_pad_push_event(m_source.get(), gst_event_new_stream_start("captions"));
            gst_pad_push_event(m_source.get(), gst_event_new_caps(gst_caps_new_empty_simple("text/x-raw")));
            GstSegment segment;
            gst_segment_init(&segment, GST_FORMAT_TIME);
            segment.rate = rate;
            segment.base = time();
            gst_pad_push_event(m_source.get(), gst_event_new_segment(&segment));
            GstBuffer *buffer = gst_buffer_new_memdup(text, strlen(text));
            GST_BUFFER_PTS(buffer) = 0;
            GST_BUFFER_DURATION(buffer) = Duration;
            m_posted = segment.base;
            gst_pad_push(m_source.get(), buffer);
        });
        streaming.join();
    }
    /** How long the pipeline has run since the last text was posted. */
    GstClockTime sincePost() const { return time() - m_posted; }

    Captions captions;

private:
    GstClockTime time() const { return gst_element_get_current_running_time(m_pipeline.get()); }

    Owned<GstElement> m_pipeline{GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new(nullptr)))};
    Owned<GstPad> m_source{GST_PAD(gst_object_ref_sink(gst_pad_new("src", GST_PAD_SRC)))};
    Owned<GstElement> m_overlay{makeOverlay()};
    GstClockTime m_posted = 0;
};

} // namespace

/** When captions are shown and hidden. */
class tst_Captions : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { startGStreamerWith(m_plugins, {"coreelements"}); }

    void caption_isShownUntilItsEnd_inTheTimeOfTheMedium_data()
    {
        const Rows<double> row("rate");
        row("as usual", 1);
        row("slowly", 0.1);
    }

    void caption_isShownUntilItsEnd_inTheTimeOfTheMedium()
    {
        QFETCH(const double, rate);
        Scene scene;
        GstClockTime hidden = 0;
        onChange = [&] { hidden = scene.sincePost(); };
        scene.post("words", rate);
        QTRY_COMPARE(drawn, "words");
        QTRY_COMPARE(drawn, "");
        QVERIFY(hidden >= static_cast<GstClockTime>(Duration / rate));
    }

    void caption_staysInAPause()
    {
        Scene scene;
        bool hasRested = false;
        onChange = [&] {
            if (!hasRested) {
                scene.setRunning(false);
            }
        };
        scene.post("words", 1);
        QTRY_COMPARE(drawn, "words");
        QTimer::singleShot(Duration * 3 / GST_MSECOND, this, [&] { hasRested = true; });
        QTRY_VERIFY(hasRested);
        QCOMPARE(drawn, "words");
        scene.setRunning(true);
        QTRY_COMPARE(drawn, "");
    }

    void caption_onItsWay_isDropped()
    {
        Scene scene;
        QByteArrayList texts;
        onChange = [&] { texts << drawn; };
        scene.post("of the former medium", 1);
        scene.captions.clear();
        scene.post("of the next one", 1);
        QTRY_VERIFY(texts.contains("of the next one"));
        QVERIFY(!texts.contains("of the former medium"));
    }

private:
    const QTemporaryDir m_plugins;
};

QTEST_GUILESS_MAIN(tst_Captions)

#include "tst_captions.moc"
