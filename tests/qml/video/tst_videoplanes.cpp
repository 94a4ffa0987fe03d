#include "FakeWorker.h"

#include <QtCore/QTemporaryDir>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickView>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>

#include <Files.h>
#include <Programs.h>
#include <Rows.h>
#include <XServer.h>

#include <atomic>
#include <thread>

using namespace voro::renderer;

namespace {

/** Lines in memory are longer than those of the picture. */
constexpr QSize Size(322, 242);
constexpr QSize Stored(328, 242);

PlanarDescription describe(FrameFormat format, FrameColors colors)
{
    static uint32_t generation = 0;
    PlanarDescription result;
    result.frame = description(Size.width(), Size.height());
    result.frame.packet = FramePacket::PlanarDescription;
    result.frame.generation = ++generation;
    result.frame.format = format;
    result.colors = colors;
    uint32_t offset = FrameHeaderSize;
    const std::span<const PlaneShape> shapes = planesOf(format);
    for (size_t i = 0; i < shapes.size(); ++i) {
        const uint32_t stride = shapes[i].side(Stored.width()) * shapes[i].pixelBytes;
        (i == 0 ? result.frame.offset : result.chroma[i - 1].offset) = offset;
        (i == 0 ? result.frame.stride : result.chroma[i - 1].stride) = stride;
        offset += stride * shapes[i].side(Stored.height());
    }
    return result;
}

/** The first picture of an input, filtered, as bytes. */
QByteArray pictureOf(const QStringList &input, const QString &filter, const QString &format)
{
    return runToEnd("ffmpeg",
                    QStringList{"-nostdin", "-loglevel", "error"} + input
                        + QStringList{"-vf", filter, "-frames:v", "1", "-pix_fmt", format, "-f", "rawvideo", "-"})
        .value_or(QByteArray());
}

/** A picture of one colour in I420, as BT.601 in the limited range. */
QByteArray flat(char luma, char cb, char cr)
{
    const qsizetype size = Stored.width() * Stored.height();
    return QByteArray(size, luma) + QByteArray(size / 4, cb) + QByteArray(size / 4, cr);
}

bool isLike(QColor color, QColor other)
{
    return qAbs(color.red() - other.red()) < 4 && qAbs(color.green() - other.green()) < 4
           && qAbs(color.blue() - other.blue()) < 4;
}

} // namespace

/** Pictures that a shader converts, in windows of an X server whose graphics card is a program. */
class tst_VideoPlanes : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        qputenv("VORO_RUNTIME_DIR", m_folder.path().toUtf8());
        m_worker.emplace(m_folder.path());
        m_view = std::make_unique<QQuickView>();
        m_view->engine()->addImportPath(QStringLiteral(MODULES));
        QQmlComponent component(m_view->engine());
        component.setData("import voro.multimedia\nVideoWindow { fillMode: VideoWindow.Stretch }", QUrl());
        m_view->setContent(QUrl(), nullptr, component.create());
        QVERIFY2(video(), qPrintable(component.errorString()));
        video()->setSize(Size);
        m_view->resize(Size);
        m_worker->meet();
        m_view->show();
        // The item says it once the scene is known.
        QTRY_VERIFY_WITH_TIMEOUT(
            (m_formats = m_worker->formats().value_or(m_formats)) > static_cast<uint32_t>(FrameFormat::Bgrx), 20'000);
    }

    void cleanupTestCase() { m_view.reset(); }

    void colors_areThoseOfAnotherConverter_data()
    {
        struct Kind {
            FrameColors colors;
            const char *conversion;
        };
        constexpr Kind Kinds[]{
            {{FrameMatrix::Bt601, FrameRange::Limited, 1, 0}, "bt601:in_range=limited:in_h_chr_pos=0:in_v_chr_pos=128"},
            {{FrameMatrix::Bt709, FrameRange::Limited, 1, 0}, "bt709:in_range=limited:in_h_chr_pos=0:in_v_chr_pos=128"},
            {{FrameMatrix::Bt2020, FrameRange::Limited, 1, 1}, "bt2020:in_range=limited:in_h_chr_pos=0:in_v_chr_pos=0"},
            {{FrameMatrix::Bt601, FrameRange::Full, 0, 0}, "bt601:in_range=full:in_h_chr_pos=128:in_v_chr_pos=128"},
            {{FrameMatrix::Bt709, FrameRange::Full, 1, 1}, "bt709:in_range=full:in_h_chr_pos=0:in_v_chr_pos=0"},
            {{FrameMatrix::Bt2020, FrameRange::Full, 0, 0}, "bt2020:in_range=full:in_h_chr_pos=128:in_v_chr_pos=128"},
        };
        const Rows<FrameFormat, QString, FrameColors, QString> row("format", "name", "colors", "conversion");
        for (const auto &[format, name] :
             {std::pair(FrameFormat::I420, "yuv420p"), std::pair(FrameFormat::Nv12, "nv12"),
              std::pair(FrameFormat::I420Ten, "yuv420p10le"), std::pair(FrameFormat::P010, "p010le")}) {
            for (const Kind &kind : Kinds) {
                row(qPrintable(QStringLiteral("%1 %2").arg(name, kind.conversion)), format, name, kind.colors,
                    kind.conversion);
            }
        }
    }

    void colors_areThoseOfAnotherConverter()
    {
        QFETCH(const FrameFormat, format);
        QFETCH(const QString, name);
        QFETCH(const FrameColors, colors);
        QFETCH(const QString, conversion);
        QVERIFY((m_formats & static_cast<uint32_t>(format)) != 0);
        const QString stored = QStringLiteral("%1x%2").arg(Stored.width()).arg(Stored.height());
        const QString file = m_folder.filePath("planes");
        const QByteArray planes = pictureOf({"-f", "lavfi", "-i", "testsrc=s=" + stored}, "null", name);
        writeFile(file, planes);
        const QString filter = QStringLiteral("crop=%1:%2:0:0,scale=flags=bilinear+accurate_rnd+full_chroma_int+"
                                              "full_chroma_inp:sws_dither=none:in_color_matrix=%3,format=gbrp")
                                   .arg(Size.width())
                                   .arg(Size.height())
                                   .arg(conversion);
        const QByteArray expected =
            pictureOf({"-f", "rawvideo", "-pix_fmt", name, "-s", stored, "-i", file}, filter, "rgb24");
        put(describe(format, colors), planes);
        const QImage shown = m_view->grabWindow().convertToFormat(QImage::Format_RGB888);
        QCOMPARE(qsizetype(shown.width()) * shown.height() * 3, expected.size());
        // Within 2 of 255.
        int largest = 0;
        for (qsizetype i = 0; i < expected.size(); ++i) {
            const uchar own = shown.constScanLine(int(i / (Size.width() * 3)))[i % (Size.width() * 3)];
            largest = std::max(largest, std::abs(own - static_cast<uchar>(expected[i])));
        }
        QVERIFY2(largest <= 2, QByteArray::number(largest).constData());
    }

    void item_changesItsWindow_andTheWorkerWhatItGave()
    {
        const QPoint middle(Size.width() / 2, Size.height() / 2);
        const PlanarDescription red = describe(FrameFormat::I420, {});
        put(red, flat(81, 90, char(240)));
        QVERIFY(isLike(m_view->grabWindow().pixelColor(middle), Qt::red));
        QQuickWindow other;
        other.resize(Size);
        other.show();
        video()->setParentItem(other.contentItem());
        QVERIFY(isLike(other.grabWindow().pixelColor(middle), Qt::red));
        video()->setOpacity(0.5);
        QVERIFY(isLike(other.grabWindow().pixelColor(middle), QColor(255, 127, 127)));
        video()->setOpacity(1);

        std::atomic<bool> isOver = false;
        std::thread scribbler([&] {
            for (int i = 0; !isOver; ++i) {
                const QByteArray noise(4096, char(i));
                pwrite(m_memory.get(), noise.constData(), 4096, i % 64 * 4096);
            }
        });
        FrameReady ready;
        ready.generation = red.frame.generation;
        for (int i = 0; i < 50; ++i) {
            m_worker->say(bytesOf(ready));
            QCoreApplication::processEvents();
            other.grabWindow();
        }
        isOver = true;
        scribbler.join();
        put(describe(FrameFormat::I420, {}), flat(41, char(240), 110));
        QVERIFY(isLike(other.grabWindow().pixelColor(middle), Qt::blue));
        video()->setParentItem(m_view->contentItem());

        // A worker converts for less than what only stands in for a graphics card.
        qunsetenv("VORO_VIDEO_SHADER");
        video()->update();
        QTRY_COMPARE_WITH_TIMEOUT((m_formats = m_worker->formats().value_or(m_formats)),
                                  static_cast<uint32_t>(FrameFormat::Bgrx), 20'000);
    }

private:
    QQuickItem *video() const { return m_view->rootObject(); }
    /** Shows a picture by a memory file of its own. */
    void put(const PlanarDescription &description, const QByteArray &picture)
    {
        m_memory = memoryFile(static_cast<off_t>(description.frame.slotSize * description.frame.slots),
                              F_SEAL_SHRINK | F_SEAL_GROW);
        QCOMPARE(pwrite(m_memory.get(), picture.constData(), static_cast<size_t>(picture.size()), FrameHeaderSize),
                 picture.size());
        QSignalSpy changes(video(), SIGNAL(pictureChanged()));
        FrameReady ready;
        ready.generation = description.frame.generation;
        QVERIFY(m_worker->say(bytesOf(description), m_memory.get()) && m_worker->say(bytesOf(ready)));
        QVERIFY(changes.wait(20'000));
    }

    QTemporaryDir m_folder;
    std::optional<FakeWorker> m_worker;
    std::unique_ptr<QQuickView> m_view;
    voro::pps::Fd m_memory;
    uint32_t m_formats = 0;
};

int main(int argc, char *argv[])
{
    const XServer screen;
    QGuiApplication application(argc, argv);
    tst_VideoPlanes test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_videoplanes.moc"
