#include "FakeWorker.h"
#include "RealMedia.h"

#include <multimedia/MediaPlayer.h>

#include <QtCore/QTemporaryDir>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickItemGrabResult>
#include <QtQuick/QQuickView>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>

#include <Daemon.h>
#include <Files.h>
#include <Programs.h>
#include <renderer/frames/FrameReceiver.h>
#include <Rows.h>
#include <Workers.h>

#include <csignal>
#include <set>

using namespace voro::multimedia;
using namespace voro::renderer;

namespace {

constexpr char Scene[] = R"(
import QtQuick
import voro.multimedia
Rectangle {
    id: scene
    width: 640; height: 480
    color: "gray"
    property alias video: video
    property MediaPlayer player: MediaPlayer {
        windowId: video.windowId
        closedCaptionWindowId: video.windowId
        videoOutput: VideoOutput.PrimaryDisplay
    }
    VideoWindow { id: video; objectName: "video"; width: 640; height: 480 }
}
)";

bool isLike(const QColor &color, const QColor &expected)
{
    const auto isNear = [](int one, int other) { return std::abs(one - other) < 48; };
    return isNear(color.red(), expected.red()) && isNear(color.green(), expected.green())
           && isNear(color.blue(), expected.blue());
}

/** The number that a frame of numbers.mkv shows in a line: sixteen columns, black or white. */
int numberIn(const QImage &image, int y)
{
    int number = 0;
    for (int bit = 0; bit < 16; ++bit) {
        number |= static_cast<int>(qGray(image.pixel(bit * 40 + 20, y)) > 127) << bit;
    }
    return number;
}

} // namespace

/** Pictures in an item: the daemon, its workers, and a scene without a screen. */
class tst_VideoWindow : public QObject {
    Q_OBJECT
private Q_SLOTS:
    // Four colours, one in each corner; after ten seconds the left ones change places with the right ones.
    void initTestCase()
    {
        const auto corners = [](const char *first, const char *second, const char *third, const char *fourth) {
            return QStringLiteral("color=c=%1:s=160x120:r=25:d=10[a];color=c=%2:s=160x120:r=25:d=10[b];"
                                  "color=c=%3:s=160x120:r=25:d=10[c];color=c=%4:s=160x120:r=25:d=10[d];"
                                  "[a][b]hstack[ab];[c][d]hstack[cd];[ab][cd]vstack")
                .arg(QLatin1String(first), QLatin1String(second), QLatin1String(third), QLatin1String(fourth));
        };
        const QStringList codec{"-c:v", "mpeg4", "-q:v", "2"};
        media::encode(m_folder.filePath("one.mp4"), corners("red", "lime", "blue", "white"), codec);
        media::encode(m_folder.filePath("other.mp4"), corners("lime", "red", "white", "blue"), codec);
        media::encode(m_folder.filePath("wide.mp4"), corners("red", "lime", "blue", "white") + ",setsar=2/1", codec);
        QVERIFY(runToEnd("ffmpeg", {"-loglevel", "error", "-i", m_folder.filePath("one.mp4"), "-c", "copy",
                                    "-metadata:s:v:0", "rotate=90", m_folder.filePath("turned.mp4")}));
        media::encode(m_folder.filePath("change.mp4"),
                      QStringLiteral("color=c=red:s=320x240:r=25:d=10,format=yuv420p,"
                                     "drawbox=c=blue:t=fill:enable='gte(t,5)'"),
                      codec);
        media::encode(m_folder.filePath("numbers.mkv"),
                      QStringLiteral("nullsrc=s=32x18:r=30:d=60,geq='255*mod(floor(N/pow(2,floor(X/2))),2)':128:128,"
                                     "scale=640:360:flags=neighbor"),
                      {"-c:v", "mpeg4", "-q:v", "2"});
        writeFile(m_folder.filePath("c.srt"), "1\n00:00:01,000 --> 00:00:03,000\nWIDE WHITE WORDS\n");
    }

    void picture_isWhereItBelongs_data()
    {
        using Points = QList<std::pair<QPoint, QColor>>;
        const Rows<QString, QVariantMap, Points> row("name", "properties", "points");
        const auto corners = [](QRect area) {
            const QPoint margin(area.width() / 8, area.height() / 8);
            const QRect inner(area.topLeft() + margin, area.bottomRight() - margin);
            return Points{{inner.topLeft(), Qt::red},
                          {inner.topRight(), Qt::green},
                          {inner.bottomLeft(), Qt::blue},
                          {inner.bottomRight(), Qt::white}};
        };
        row("twice as large", "one.mp4", QVariantMap{}, corners({0, 0, 640, 480}));
        row("as it is", "one.mp4", QVariantMap{{"width", 320}, {"height", 240}},
            corners({0, 0, 320, 240}) + Points{{{330, 250}, Qt::darkGray}});
        row("bars above and below", "one.mp4", QVariantMap{{"width", 320}, {"height", 480}},
            corners({0, 120, 320, 240}) + Points{{{160, 60}, Qt::darkGray}});
        row("stretched", "one.mp4", QVariantMap{{"width", 320}, {"height", 480}, {"fillMode", 0}},
            corners({0, 0, 320, 480}));
        row("cut off", "one.mp4", QVariantMap{{"width", 320}, {"height", 480}, {"fillMode", 2}},
            corners({0, 0, 320, 480}));
        row("wide pixels", "wide.mp4", QVariantMap{}, corners({0, 120, 640, 240}) + Points{{{320, 60}, Qt::darkGray}});
        row("upside down", "one.mp4", QVariantMap{{"rotation", 180}},
            Points{{{80, 60}, Qt::white}, {{560, 60}, Qt::blue}, {{80, 420}, Qt::green}, {{560, 420}, Qt::red}});
        row("film of a turned camera", "turned.mp4", QVariantMap{},
            Points{{{160, 60}, Qt::green}, {{480, 60}, Qt::white}, {{160, 420}, Qt::red}, {{480, 420}, Qt::blue}});
        row("mirrored medium", "other.mp4", QVariantMap{},
            Points{{{80, 60}, Qt::green}, {{560, 60}, Qt::red}, {{80, 420}, Qt::white}, {{560, 420}, Qt::blue}});
    }

    void picture_isWhereItBelongs()
    {
        using Points = QList<std::pair<QPoint, QColor>>;
        QFETCH(const QString, name);
        QFETCH(const QVariantMap, properties);
        QFETCH(Points, points);
        for (auto &[point, color] : points) {
            // The scene's gray, and the green that media call lime.
            color = color == QColor(Qt::darkGray) ? QColor("gray")
                    : color == QColor(Qt::green)  ? QColor("lime")
                                                  : color;
        }
        makeScene();
        for (auto property = properties.begin(); property != properties.end(); ++property) {
            QVERIFY(video()->setProperty(qPrintable(property.key()), property.value()));
        }
        QCOMPARE(player()->setSourceUrl(QUrl::fromLocalFile(m_folder.filePath(name))), MediaError::None);
        QCOMPARE(player()->play(), MediaError::None);
        QVERIFY(shows(points));
        const QSize size(320, 240);
        QCOMPARE(video()->property("sourceSize").toSize(), name == "turned.mp4" ? size.transposed() : size);
        // Wherever the picture is, it is there at every size.
        if (properties.isEmpty() && name == QLatin1String("one.mp4")) {
            for (int i = 0; i < 100; ++i) {
                m_view->rootObject()->setProperty("width", 200 + i * 4);
                video()->setSize(QSizeF(40 + i * 6, 30 + i * 3));
                m_view->grabWindow();
            }
            video()->setSize(QSizeF(640, 480));
            QVERIFY(shows(points));
        }
    }

    /** Where its pixels are not the screen's, also when only an item around it is scaled later. */
    void picture_isInterpolated()
    {
        makeScene();
        video()->setSize(QSizeF(320, 240));
        QCOMPARE(player()->setSourceUrl(QUrl::fromLocalFile(m_folder.filePath("one.mp4"))), MediaError::None);
        QCOMPARE(player()->play(), MediaError::None);
        QVERIFY(shows({{{40, 30}, Qt::red}}));
        QCOMPARE(player()->pause(), MediaError::None);
        // Between red and green, at 160 of 320.
        const auto isInterpolated = [](const QImage &image) { return image.pixel(318, 120) != image.pixel(319, 120); };
        const auto grabbed = video()->grabToImage({640, 480});
        QVERIFY(grabbed && QSignalSpy(grabbed.get(), &QQuickItemGrabResult::ready).wait());
        QVERIFY(isInterpolated(grabbed->image()));
        m_view->rootObject()->setTransformOrigin(QQuickItem::TopLeft);
        m_view->rootObject()->setScale(2);
        QVERIFY(isInterpolated(m_view->grabWindow()));
    }

    void picture_followsSeek_staysInPause_goesWithTheMedium()
    {
        makeScene();
        QCOMPARE(player()->setSourceUrl(url("change.mp4")), MediaError::None);
        QCOMPARE(player()->play(), MediaError::None);
        QVERIFY(shows({{{320, 240}, Qt::red}}));
        QCOMPARE(player()->seekTime(7'000), MediaError::None);
        QVERIFY(shows({{{320, 240}, Qt::blue}}));
        QCOMPARE(player()->pause(), MediaError::None);
        QCOMPARE(player()->seekTime(1'000), MediaError::None);
        QVERIFY(shows({{{320, 240}, Qt::red}}));
        QVERIFY(video()->property("hasPicture").toBool());
        QCOMPARE(player()->reset(), MediaError::None);
        QVERIFY(shows({{{320, 240}, QColor("gray")}}));
        QVERIFY(!video()->property("hasPicture").toBool());
    }

    void captions_comeAndGo()
    {
        makeScene();
        MediaPlayer *const shown = player();
        QCOMPARE(shown->setSourceUrl(url("change.mp4")), MediaError::None);
        QCOMPARE(shown->setClosedCaptionUrl(1, url("c.srt")), MediaError::None);
        QCOMPARE(shown->setClosedCaptionEnabled(true), MediaError::None);
        QCOMPARE(shown->setStatusInterval(50), MediaError::None);
        QSignalSpy positions(shown, qOverload<uint>(&MediaPlayer::positionChanged));
        QCOMPARE(shown->play(), MediaError::None);
        const auto whitePixels = [this] {
            const QImage image = m_view->grabWindow();
            int count = 0;
            for (int y = 240; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    count += isLike(image.pixelColor(x, y), Qt::white);
                }
            }
            return count;
        };
        QVERIFY(shows({{{320, 120}, Qt::red}}));
        // A position that came after a picture is later than that, one from before it earlier.
        const int early = whitePixels();
        QVERIFY(positions.wait());
        if (shown->position() < 900) {
            QCOMPARE(early, 0);
        }
        QVERIFY(QTest::qWaitFor([&] { return whitePixels() > 200; }, 20'000));
        QVERIFY(positions.wait());
        QVERIFY(shown->position() >= 900);
        uint last = 0;
        const auto isGone = [&] {
            const uint position = shown->position();
            const bool isShown = whitePixels() > 0;
            last = isShown ? position : last;
            return !isShown;
        };
        QVERIFY(QTest::qWaitFor(isGone, 20'000));
        QVERIFY2(last < 3'500, qPrintable(QString::number(last)));
        QVERIFY(positions.wait());
        QVERIFY(shown->position() >= 2'900);
    }

    void frames_areWholeAndComplete()
    {
        FrameReceiver receiver(QStringLiteral("numbers"));
        std::set<int> numbers;
        int torn = 0;
        uint64_t first = 0;
        uint64_t last = 0;
        connect(&receiver, &FrameReceiver::frameChanged, &receiver, [&] {
            const std::shared_ptr<Frame> frame = receiver.frame();
            if (!frame) {
                return;
            }
            const QImage image = Frame::image(frame);
            const int number = numberIn(image, 2);
            torn += number != numberIn(image, 180) || number != numberIn(image, 357);
            numbers.insert(number);
            first = first == 0 ? frame->serial() : first;
            last = frame->serial();
        });
        MediaPlayer player;
        player.setWindowId(QStringLiteral("numbers"));
        QCOMPARE(player.setVideoOutput(VideoOutput::PrimaryDisplay), MediaError::None);
        QCOMPARE(player.setSourceUrl(url("numbers.mkv")), MediaError::None);
        QSignalSpy completed(&player, &MediaPlayer::playbackCompleted);
        QCOMPARE(player.play(), MediaError::None);
        QTRY_COMPARE_WITH_TIMEOUT(completed.count(), 1, 150'000);
        QCOMPARE(torn, 0);
        qInfo() << numbers.size() << "of 1800 pictures";
        // The renderer itself leaves pictures out that would be late; of those that it shows none is lost here.
        QVERIFY2(last > 1500, QByteArray::number(qulonglong(last)).constData());
        QVERIFY2(qulonglong(numbers.size()) + 1 >= last - first,
                 QByteArray::number(qulonglong(numbers.size())).constData());
        QCOMPARE(*numbers.rbegin(), 1799);
    }

    void workerKilled_costsThePicture()
    {
        makeScene();
        QCOMPARE(player()->setSourceUrl(url("change.mp4")), MediaError::None);
        QCOMPARE(player()->play(), MediaError::None);
        QVERIFY(shows({{{320, 240}, Qt::red}}));
        const QList<pid_t> workers = workersWith(url("change.mp4").toLocalFile().toUtf8(), m_daemon.processId());
        QCOMPARE(workers.size(), 1);
        ::kill(workers.first(), SIGKILL);
        QVERIFY(shows({{{320, 240}, QColor("gray")}}));
        QTRY_COMPARE(player()->mediaState(), MediaState::Stopped);
        QCOMPARE(player()->play(), MediaError::None);
        QVERIFY(shows({{{320, 240}, Qt::red}}));
    }

    void daemonKilled_theItemFindsTheNext()
    {
        FrameReceiver receiver(QStringLiteral("survivor"));
        MediaPlayer player;
        player.setWindowId(QStringLiteral("survivor"));
        QCOMPARE(player.setVideoOutput(VideoOutput::PrimaryDisplay), MediaError::None);
        QCOMPARE(player.setSourceUrl(url("change.mp4")), MediaError::None);
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(player.play(), MediaError::None);
            QTRY_VERIFY_WITH_TIMEOUT(receiver.frame(), 20'000);
            m_daemon.kill();
            QTRY_VERIFY_WITH_TIMEOUT(!receiver.frame(), 20'000);
            QTRY_COMPARE(player.mediaState(), MediaState::Stopped);
            QVERIFY(m_daemon.start());
        }
    }

    void itemGoes_whilePicturesCome()
    {
        MediaPlayer player;
        player.setWindowId(QStringLiteral("goes"));
        QCOMPARE(player.setVideoOutput(VideoOutput::PrimaryDisplay), MediaError::None);
        QCOMPARE(player.setSourceUrl(url("change.mp4")), MediaError::None);
        QCOMPARE(player.play(), MediaError::None);
        for (int i = 0; i < 20; ++i) {
            auto receiver = std::make_unique<FrameReceiver>(QStringLiteral("goes"));
            QTRY_VERIFY(receiver->frame());
            // An image that somebody keeps is valid longer than its item.
            const QImage kept = Frame::image(receiver->frame());
            receiver.reset();
            QVERIFY(isLike(kept.pixelColor(160, 120), Qt::red) || isLike(kept.pixelColor(160, 120), Qt::blue));
        }
        QCOMPARE(player.mediaState(), MediaState::Started);
    }

    void formats_followTheReceiver()
    {
        constexpr auto Bgrx = static_cast<uint32_t>(FrameFormat::Bgrx);
        FrameReceiver receiver(QStringLiteral("formats"));
        MediaPlayer player;
        player.setWindowId(QStringLiteral("formats"));
        QCOMPARE(player.setVideoOutput(VideoOutput::PrimaryDisplay), MediaError::None);
        QCOMPARE(player.setSourceUrl(url("one.mp4")), MediaError::None);
        const auto isOf = [&receiver](FrameFormat format) {
            return receiver.frame() && receiver.frame()->description().frame.format == format;
        };
        receiver.setFormats(Bgrx | static_cast<uint32_t>(FrameFormat::I420));
        QCOMPARE(player.play(), MediaError::None);
        QTRY_VERIFY_WITH_TIMEOUT(isOf(FrameFormat::I420), 20'000);
        // Red is in the upper left corner.
        const std::shared_ptr<Frame> planes = receiver.frame();
        const auto near = [&planes](size_t plane, int value) {
            return qAbs(std::to_integer<int>(*planes->plane(plane)) - value) < 8;
        };
        QVERIFY(near(0, 81) && near(1, 90) && near(2, 240));
        QCOMPARE(player.pause(), MediaError::None);
        receiver.setFormats(Bgrx);
        QTRY_VERIFY_WITH_TIMEOUT(isOf(FrameFormat::Bgrx), 20'000);
        QVERIFY(isLike(Frame::image(receiver.frame()).pixelColor(0, 0), Qt::red));
    }

    void lies_costThePictureOnly_data()
    {
        Rows<QString>("lie").each(
            {"too large", "may shrink", "no file", "stride", "slot", "generation", "garbage", "frame first"});
    }

    void lies_costThePictureOnly()
    {
        QFETCH(const QString, lie);
        const QTemporaryDir folder;
        const QByteArray former = qgetenv("VORO_RUNTIME_DIR");
        qputenv("VORO_RUNTIME_DIR", folder.path().toUtf8());
        FakeWorker liar(folder.path());
        FrameReceiver receiver(QStringLiteral("lied-to"));
        qputenv("VORO_RUNTIME_DIR", former);
        liar.meet();
        constexpr unsigned Sealed = F_SEAL_SHRINK | F_SEAL_GROW;
        FrameDescription truth = description(64, 32);
        const auto size = static_cast<off_t>(truth.slotSize * truth.slots);
        const voro::pps::Fd file =
            memoryFile(lie == "too large" ? size - 1 : size, lie == "may shrink" ? F_SEAL_GROW : Sealed);
        if (lie == "stride") {
            truth.stride = 1U << 31;
        }
        if (lie == "garbage") {
            QVERIFY(liar.say(std::as_bytes(std::span("garbage"))));
        } else if (lie != "frame first") {
            QVERIFY(liar.say(bytesOf(truth), lie == "no file" ? -1 : file.get()));
        }
        FrameReady frame;
        frame.generation = lie == "generation" ? 2 : 1;
        frame.slot = lie == "slot" ? FewestFrameSlots : 0;
        liar.say(bytesOf(frame));
        QTRY_VERIFY(liar.isLeft());
        QVERIFY(!receiver.frame());
    }

private:
    QUrl url(const char *name) const { return QUrl::fromLocalFile(m_folder.filePath(QLatin1String(name))); }

    void makeScene()
    {
        m_view = std::make_unique<QQuickView>();
        m_view->engine()->addImportPath(QStringLiteral(MODULES));
        QQmlComponent component(m_view->engine());
        component.setData(Scene, QUrl());
        QObject *scene = component.create();
        if (!scene) {
            qFatal("%s", qUtf8Printable(component.errorString()));
        }
        m_view->setContent(QUrl(), nullptr, scene);
        m_view->show();
        if (!QTest::qWaitForWindowExposed(m_view.get())) {
            qFatal("no window");
        }
    }

    MediaPlayer *player() const { return m_view->rootObject()->property("player").value<MediaPlayer *>(); }
    QQuickItem *video() const { return m_view->rootObject()->findChild<QQuickItem *>(QStringLiteral("video")); }
    /** Whether the scene shows such colours at these places, sooner or later. */
    bool shows(const QList<std::pair<QPoint, QColor>> &points) const
    {
        return QTest::qWaitFor(
            [&] {
                const QImage image = m_view->grabWindow();
                return std::all_of(points.begin(), points.end(), [&](const auto &point) {
                    return isLike(image.pixelColor(point.first), point.second);
                });
            },
            20'000);
    }

    QTemporaryDir m_folder;
    const int m_sink = qputenv("VORO_AUDIO_SINK", "fakesink sync=true");
    Daemon m_daemon;
    std::unique_ptr<QQuickView> m_view;
};

QTEST_MAIN(tst_VideoWindow)
#include "tst_videowindow.moc"
