#include <QtTest/QtTest>

#include <renderer/worker/video/FrameRingWriter.h>
#include <Rows.h>
#include <unistd.h>

#include <cstring>
#include <functional>

using namespace voro::renderer;

/** What a worker passes to an item: what of a picture goes as it is, and what is true of its description. */
class tst_FrameRing : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        // As for the state machine: no element is made, and the names of all the plugins would outgrow a table.
        qputenv("GST_REGISTRY_DISABLE", "yes");
        gst_init(nullptr, nullptr);
    }

    void planes_goAsTheyAre_whereTheItemTakesThem_data()
    {
        const Rows<QByteArray, uint32_t, FrameFormat, FrameColors> row("caps", "taken", "format", "colors");
        constexpr uint32_t All = 31;
        const FrameColors none;
        row("I420", "I420,colorimetry=bt709,chroma-site=mpeg2", All, FrameFormat::I420,
            {FrameMatrix::Bt709, FrameRange::Limited, 1, 0});
        row("Cr before Cb", "YV12,colorimetry=(string)1:4:0:0,chroma-site=jpeg", All, FrameFormat::I420,
            {FrameMatrix::Bt601, FrameRange::Full, 0, 0});
        row("NV12", "NV12,colorimetry=bt601,chroma-site=cosited", All, FrameFormat::Nv12,
            {FrameMatrix::Bt601, FrameRange::Limited, 1, 1});
        row("ten bits", "I420_10LE,colorimetry=bt2020-10,chroma-site=mpeg2", All, FrameFormat::I420Ten,
            {FrameMatrix::Bt2020, FrameRange::Limited, 1, 0});
        row("P010", "P010_10LE,colorimetry=bt709,chroma-site=mpeg2", All, FrameFormat::P010,
            {FrameMatrix::Bt709, FrameRange::Limited, 1, 0});
        row("colours of a rare kind", "I420,colorimetry=smpte240m", All, FrameFormat::Bgrx, none);
        row("planes of a rare kind", "Y444,colorimetry=bt709", All, FrameFormat::Bgrx, none);
        row("an item that takes none", "I420,colorimetry=bt709", 1U, FrameFormat::Bgrx, none);
    }

    void planes_goAsTheyAre_whereTheItemTakesThem()
    {
        QFETCH(const QByteArray, caps);
        QFETCH(const uint32_t, taken);
        QFETCH(const FrameFormat, format);
        QFETCH(const FrameColors, colors);
        const Owned<GstCaps> parsed(gst_caps_from_string("video/x-raw,width=18,height=6,format=" + caps));
        GstVideoInfo info;
        QVERIFY(gst_video_info_from_caps(&info, parsed.get()));
        const Owned<GstBuffer> picture(gst_buffer_new_allocate(nullptr, info.size, nullptr));
        GstVideoFrame frame;
        QVERIFY(gst_video_frame_map(&frame, &info, picture.get(), GST_MAP_WRITE));
        const int bytes = GST_VIDEO_FRAME_COMP_DEPTH(&frame, 0) > 8 ? 2 : 1;
        for (int component = 0; component < 3; ++component) {
            auto *data = static_cast<uchar *>(GST_VIDEO_FRAME_COMP_DATA(&frame, component));
            std::memset(data, 50 + component, static_cast<size_t>(bytes));
        }
        gst_video_frame_unmap(&frame);

        const auto ring = FrameRingWriter::make(info, taken, 1);
        QVERIFY(ring && ring->fits(info, taken) && !ring->fits(info, taken ^ 2U));
        QVERIFY(ring->fill(*ring->takeSlot(), picture.get(), 7));
        PlanarDescription description;
        std::memcpy(static_cast<void *>(&description), ring->description().data(), ring->description().size());
        QCOMPARE(description.frame.format, format);
        if (format != FrameFormat::Bgrx) {
            QVERIFY(description.colors == colors);
            const bool isPair = planesOf(format).size() == 2;
            const auto at = [&ring](uint32_t offset) {
                uchar byte = 0;
                return pread(ring->descriptor(), &byte, 1, offset) == 1 ? byte : -1;
            };
            QCOMPARE(at(description.frame.offset), 50);
            QCOMPARE(at(description.chroma[0].offset), 51);
            QCOMPARE(at(isPair ? description.chroma[0].offset + uint32_t(bytes) : description.chroma[1].offset), 52);
        }
    }

    void descriptions_areRefused_data()
    {
        using Change = std::function<void(PlanarDescription &)>;
        const Rows<Change> row("change");
        row("a plain packet", [](auto &d) { d.frame.packet = FramePacket::Description; });
        row("an unknown format", [](auto &d) { d.frame.format = static_cast<FrameFormat>(6); });
        row("an unknown matrix", [](auto &d) { d.colors.matrix = static_cast<FrameMatrix>(3); });
        row("an unknown range", [](auto &d) { d.colors.range = static_cast<FrameRange>(2); });
        row("luma in the header", [](auto &d) { d.frame.offset = 0; });
        row("lines of luma too short", [](auto &d) { d.frame.stride = 4; });
        row("chroma in the header", [](auto &d) { d.chroma[0].offset = 0; });
        row("chroma behind the slot", [](auto &d) { d.chroma[1].offset += 4; });
        row("an odd offset", [](auto &d) { d.chroma[0].offset += 1; });
        row("an odd stride", [](auto &d) { d.chroma[0].stride += 1; });
        row("lines too short", [](auto &d) { d.chroma[0].stride = 0; });
        row("lines that overflow", [](auto &d) { d.chroma[1].stride = ~3U; });
        row("an offset that overflows", [](auto &d) { d.chroma[1].offset = ~3U; });
    }

    void descriptions_areRefused()
    {
        QFETCH(const std::function<void(PlanarDescription &)>, change);
        PlanarDescription description{{}, {}, {{{96, 4}, {104, 4}}}};
        FrameDescription &frame = description.frame;
        frame = {FramePacket::PlanarDescription, 1, FrameFormat::I420, 8, 4, 1, 1, FewestFrameSlots, 112, 64, 8};
        const uint64_t size = frame.slotSize * frame.slots;
        QVERIFY(isValid(description, size) && !isValid(description, size - 1));
        change(description);
        QVERIFY(!isValid(description, size));
    }
};

QTEST_GUILESS_MAIN(tst_FrameRing)
#include "tst_frame_ring.moc"
