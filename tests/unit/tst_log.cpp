#include "PlayerFixture.h"
#include "private/Logger.h"
#include "private/MediaUtils.h"
#include "private/NowPlayingConnectionPrivate.h"

#include <multimedia/SystemSound.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QThread>
#include <QtTest/QtTest>

#include <Rows.h>

using namespace voro::multimedia;

using P = MediaPlayer;

/**
 * The lines that the library writes with debugging on, of each kind some. Announcements of signals are compared by the
 * rows of other tests.
 */
class LogTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void lines_ofACommand_data();
    void lines_ofACommand();
    void lines_ofAnIdentifier();
    void lines_ofASound();
    void lines_ofNowPlaying_data();
    void lines_ofNowPlaying();
    void tracer_tellsEntryAndExit();
};

namespace {

/** The lines for debugging since the last call, without those that tell of functions being entered and left. */
QStringList linesOf(voro::test::LogCatcher &log)
{
    QStringList lines = log.takeDebugLines();
    lines.removeIf([](const QString &line) { return line.startsWith(QLatin1String("FunctionTracer::")); });
    return lines;
}

} // namespace

void LogTest::initTestCase()
{
    QVERIFY2(ENABLE_DEBUG, "to be run with VOROMULTIMEDIA_LOG_DEBUG=1");
}

void LogTest::lines_ofACommand_data()
{
    // Lines have " | " between.
    const Rows<Preparation, Action, QString> row("given", "act", "lines");
    row("pause", started, call(&P::pause),
        "MediaPlayer::setSpeed: speed=0 | MediaPlayerPrivate::onMmrSpeedChanged: speed=0 | "
        "MediaPlayerPrivate::setMediaState: Attempting to change to same state.  mediaState=Paused");
    row("same volume", newPlayer, call(&P::setVolume, 1.0),
        "MediaPlayer::setVolume: volume=1 | MediaPlayer::setVolume: Volume already set to 1");
    row("part of the pictures", startedWithVideo, call(&P::setVideoSourceRect, 1, 2, 3u, 4u),
        "MediaPlayer::setVideoSourceRect: x=1, y=2, width=3, height=4 | "
        "MediaPlayerPrivate::updateVideoOutputParams: rect=QRect(1,2 3x4)");
    row("interval as a variant", newPlayer, call(&P::setStatusIntervalQml, QVariant(1000)),
        "MediaPlayer::setStatusIntervalQml: statusInterval=\"1000\" | "
        "MediaPlayer::setStatusInterval: statusInterval=1000 | "
        "MediaPlayerPrivate::updateContextParams: updateInterval=1000");
}

void LogTest::lines_ofACommand()
{
    QFETCH(Preparation, given);
    QFETCH(Action, act);
    QFETCH(QString, lines);
    PlayerFixture f;
    given(f);
    f.forget();
    act(f);
    QStringList found = linesOf(f.log);
    found.removeIf([](const QString &line) { return isAnnouncement(line); });
    QCOMPARE(found, lines.split(QStringLiteral(" | ")));
}

void LogTest::lines_ofAnIdentifier()
{
    voro::test::LogCatcher log;
    const QString identifier = MediaUtils::instance()->generateUniqueId();
    QCOMPARE(linesOf(log),
             QStringList(QStringLiteral("MediaUtils::generateUniqueId: \"generated: %1\"").arg(identifier)));
}

void LogTest::lines_ofASound()
{
    const QTemporaryDir folder;
    qputenv("VORO_RUNTIME_DIR", folder.path().toUtf8());
    qputenv("VORO_AUTOSPAWN", "0");
    voro::test::LogCatcher log;
    SystemSound sound(SystemSound::InputKeypress);
    log.takeDebugLines();
    sound.play();
    QCOMPARE(linesOf(log),
             (QStringList{"SystemSoundPrivate::play: sound=9", "SystemSoundPrivate::send: sound=9, msg=\"play_sound\"",
                          "SystemSoundPrivate::toString: sound=9"}));
    sound.setSound(SystemSound::InputKeypress);
    QCOMPARE(linesOf(log).last(), QStringLiteral("SystemSoundPrivate::setSound: Ignoring sound already set"));
}

using C = NowPlayingConnection;
using NowPlaying = std::function<void(NowPlayingConnection &, NowPlayingConnectionPrivate &)>;

void LogTest::lines_ofNowPlaying_data()
{
    const Rows<NowPlaying, QString> row("act", "lines");
    const auto set = [](auto method, auto... arguments) {
        return NowPlaying(
            [=](NowPlayingConnection &connection, auto &) { static_cast<void>((connection.*method)(arguments...)); });
    };
    const auto message = [](const QVariantMap &control) {
        return NowPlaying([=](auto &, NowPlayingConnectionPrivate &parts) { parts.handleControlMessage(control); });
    };
    row("position", set(&C::setPosition, 7),
        "NowPlayingConnection::setPosition: postion=7 | NowPlayingConnection::setPosition: emit "
        "positionChanged() | NowPlayingConnection::setPosition:   position=7");
    row("same next", set(&C::setNextEnabled, true),
        "NowPlayingConnection::setNextEnabled: nextEnabled=true | NowPlayingConnection::setNextEnabled: Next "
        "button is already enabled");
    row("not preemptable", set(&C::setPreemptable, false),
        "NowPlayingConnection::setPreemptable: preemptable=false | NowPlayingConnection::setPriorityLevel: "
        "priority level=1 | NowPlayingConnection::setPreemptable: emit preemptableChanged() | "
        "NowPlayingConnection::setPreemptable:   preemptable=false");
    row("registration", NowPlaying([](auto &, NowPlayingConnectionPrivate &parts) {
            parts.registration(QStringLiteral("a"), PriorityLevel::High, OverlayStyle::Plain, 7, DeviceMode::Capture);
        }),
        "NowPlayingConnectionPrivate::registration: overlayStyle=Plain, connectionName=\"a\", "
        "priority level=High, audioManagerHandle=7, deviceMode=Capture | "
        "NowPlayingConnectionPrivate::toString: priority level=High | "
        "NowPlayingConnectionPrivate::toString: overlayStyle=Plain | "
        "NowPlayingConnectionPrivate::send: msg=QMap((\"dat\", QVariant(QVariantMap, "
        "QMap((\"audio\", QVariant(QString, \"general\"))(\"audioman_handle\", QVariant(uint, 7))"
        "(\"name\", QVariant(QString, \"a\"))(\"overlay\", QVariant(QString, \"plain\"))"
        "(\"prio\", QVariant(QString, \"high\"))(\"recorder\", QVariant(bool, true)))))"
        "(\"msg\", QVariant(QString, \"register\")))");
    row("nothing to publish", NowPlaying([](auto &, auto &parts) { parts.onInvalidate(); }),
        "NowPlayingConnectionPrivate::onInvalidate: force=false | "
        "NowPlayingConnectionPrivate::onInvalidate: Not sending data. "
        "acquired=false, send=false");
    row("watcher", message({{"msg", "track"}, {"dat", "sendData"}}),
        "NowPlayingConnectionPrivate::handleControlMessage: control=QMap((\"dat\", QVariant(QString, "
        "\"sendData\"))(\"msg\", QVariant(QString, \"track\"))) | "
        "NowPlayingConnectionPrivate::handleControlMessage: SEND metadata | "
        "NowPlayingConnectionPrivate::handleControlMessage: emit controllerActiveChanged() | "
        "NowPlayingConnectionPrivate::handleControlMessage:   controllerActive=true");
}

void LogTest::lines_ofNowPlaying()
{
    QFETCH(NowPlaying, act);
    QFETCH(QString, lines);
    NowPlayingConnection connection;
    NowPlayingConnectionPrivate parts(&connection);
    voro::test::LogCatcher log;
    act(connection, parts);
    QCOMPARE(linesOf(log), lines.split(QStringLiteral(" | ")));
}

void LogTest::tracer_tellsEntryAndExit()
{
    PlayerFixture f;
    f.forget();
    f.media.volumeChanged(1.0);
    QCOMPARE(f.log.takeDebugLines(), QStringList());
    f.media.stop();
    const int thread = static_cast<int>(reinterpret_cast<quintptr>(QThread::currentThreadId()));
    const QStringList lines = f.log.takeDebugLines();
    QCOMPARE(lines.size(), 3);
    QCOMPARE(lines.at(0), QStringLiteral("FunctionTracer::FunctionTracer: START%1MediaPlayer::stop").arg(thread));
    const QRegularExpression end(
        QStringLiteral("^FunctionTracer::~FunctionTracer: => END%1\\(\\d+ms\\):$").arg(thread));
    QVERIFY2(end.match(lines.at(2)).hasMatch(), qPrintable(lines.at(2)));
}

QTEST_GUILESS_MAIN(LogTest)
#include "tst_log.moc"
