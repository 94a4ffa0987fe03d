#include <voro/audio_manager.h>

#include <QtTest/QtTest>

#include <renderer/service/AudioInput.h>
#include <renderer/worker/record/Mp3Header.h>
#include <renderer/worker/record/WavHeader.h>
#include <Rows.h>

using namespace voro::renderer;

namespace {

constexpr uint64_t GiB = static_cast<uint64_t>(1) << 30;

uint64_t number(const WavHeader &header, size_t offset, int bytes)
{
    uint64_t value = 0;
    for (int i = bytes - 1; i >= 0; --i) {
        value = value << 8 | header[offset + static_cast<size_t>(i)];
    }
    return value;
}

QByteArray text(const WavHeader &header, size_t offset)
{
    return {reinterpret_cast<const char *>(header.data()) + offset, 4};
}

} // namespace

/** The parts of recording that need neither a source nor a file. */
class tst_RecordingParts : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void wavHeader_tellsSizes_data()
    {
        const Rows<uint64_t, bool> row("size", "isLarge");
        row("empty", static_cast<uint64_t>(0), false);
        row("a second", static_cast<uint64_t>(192'000), false);
        row("the last small one", 4 * GiB - 1 - 72, false);
        row("the first large one", 4 * GiB - 72, true);
        row("a week", static_cast<uint64_t>(7 * 24 * 3600) * 192'000, true);
    }

    void wavHeader_tellsSizes()
    {
        QFETCH(const uint64_t, size);
        QFETCH(const bool, isLarge);
        constexpr uint64_t Most = 0xFFFFFFFF;
        const WavHeader header = wavHeader({48'000, 2}, size);
        QCOMPARE(text(header, 0), QByteArray(isLarge ? "RF64" : "RIFF"));
        QCOMPARE(number(header, 4, 4), isLarge ? Most : size + 72);
        QCOMPARE(text(header, 12), QByteArray(isLarge ? "ds64" : "JUNK"));
        QCOMPARE(number(header, 20, 8), isLarge ? size + 72 : 0);
        QCOMPARE(number(header, 28, 8), isLarge ? size : 0);
        QCOMPARE(number(header, 36, 8), isLarge ? size / 4 : 0);
        QCOMPARE(text(header, 48), QByteArray("fmt "));
        QCOMPARE(number(header, 60, 4), static_cast<uint64_t>(48'000));
        QCOMPARE(number(header, 64, 4), static_cast<uint64_t>(192'000));
        QCOMPARE(text(header, 72), QByteArray("data"));
        QCOMPARE(number(header, 76, 4), isLarge ? Most : size);
    }

    void mp3Header_knowsThePlaces_data()
    {
        const Rows<int> row("frames");
        row("one", 1);
        row("a second", 38);
        row("the last whole table", 1'000);
        row("an hour", 137'813);
    }

    // The second half of the frames has three times the size of the first.
    void mp3Header_knowsThePlaces()
    {
        QFETCH(const int, frames);
        constexpr std::array<uint8_t, 4> First{0xff, 0xfb, 0x90, 0x64};
        constexpr size_t Table = 52;
        Mp3Header header;
        header.begin(First);
        for (int i = 0; i < frames; ++i) {
            header.add(2 * i < frames ? 200 : 600);
        }
        const std::vector<uint8_t> bytes = header.bytes(Mp3Header::Unknown, 576);
        QCOMPARE(static_cast<int>(bytes[45] << 16 | bytes[46] << 8 | bytes[47]), frames);
        // Nobody knows how much was added at the end.
        QCOMPARE(bytes[177] << 16 | bytes[178] << 8 | bytes[179], 576 << 12);
        const auto exact = [&](int percent) { return percent <= 50 ? percent * 1.28 : 64 + (percent - 50) * 3.84; };
        for (int percent = 0; percent < 100 && frames > 1; ++percent) {
            // A frame's and the head's share, and what a table of at most a thousand places rounds off.
            const double slack = 2 + 256.0 * 600 / (400.0 * frames) + 256 * 209 / (400.0 * frames);
            QVERIFY2(std::abs(bytes[Table + static_cast<size_t>(percent)] - exact(percent)) <= slack,
                     qPrintable(QString::number(percent)));
        }
    }

    void role_isTheHandles_elseTheTypes_data()
    {
        const Rows<QByteArray, QByteArray, QByteArray> row("handle", "type", "role");
        row("nothing", "0", {}, {});
        unsigned call = 0;
        QCOMPARE(audio_manager_get_handle(AUDIO_TYPE_VOICE, &call), 0);
        row("a handle and a type", QByteArray::number(call), "voice_recording", "phone");
        row("a type", "0", "voice_recording", "production");
        row("an unknown type", "0", "smell", {});
    }

    void role_isTheHandles_elseTheTypes()
    {
        QFETCH(const QByteArray, handle);
        QFETCH(const QByteArray, type);
        QFETCH(const QByteArray, role);
        Parameters parameters;
        parameters.set("audioman_handle", handle.toStdString());
        parameters.set("audio_type", type.toStdString());
        QCOMPARE(QByteArray::fromStdString(recordingRole(parameters)), role);
    }
};

QTEST_GUILESS_MAIN(tst_RecordingParts)
#include "tst_recording_parts.moc"
