#include "PlayerFixture.h"
#include "RuntimeBroker.h"

#include <multimedia/AudioRecorder.h>

#include <QtCore/QEventLoop>
#include <QtCore/QPointer>

#include <algorithm>
#include <map>
#include <set>

using namespace voro::multimedia;

using P = MediaPlayer;
using R = AudioRecorder;
using N = MmrContextNotifier;

namespace {

/** What is done to an object that was prepared for it; its slots destroy it on the way. */
template<typename Media>
struct Step {
    PreparationOf<Media> given;
    ActionOn<Media> act;
};
template<typename Media>
using Steps = std::map<std::string, Step<Media>>;

/**
 * What the renderer publishes in one go for an object that was prepared for it, with " | " between, and the last
 * signal that comes of it.
 */
template<typename Media>
struct Publication {
    PreparationOf<Media> given;
    QString objects;
    QString last;
};

bool isSignal(const QString &line)
{
    return line.endsWith(QLatin1Char(')'));
}

void runEventLoop()
{
    QEventLoop loop;
    QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    loop.exec();
}

/**
 * What comes of an action on an object that is destroyed in its slot of one line of the trace, and then runs an event
 * loop there; with -1 it lives.
 */
template<typename Media>
void record(QStringList &trace, const PreparationOf<Media> &given, const ActionOn<Media> &act, qsizetype end)
{
    const QByteArray runtime = qgetenv("VORO_RUNTIME_DIR");
    // A broker that a test has made stays the one.
    MediaFixture<Media> f([&](auto &) {
        if (!runtime.isEmpty()) {
            qputenv("VORO_RUNTIME_DIR", runtime);
        }
    });
    given(f);
    f.forget();
    const QPointer<N> monitor(&f.notifier);
    f.emitted.setThen([&] {
        if (f.trace.size() != end + 1) {
            return;
        }
        f.owned.reset();
        runEventLoop();
        QVERIFY2(monitor, "what was under way is gone");
    });
    QCOMPARE(act(f), MediaError::None);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(!f.owned, end >= 0);
    QCOMPARE(monitor.isNull(), end >= 0);
    QCOMPARE(f.log.takeLines(), QStringList());
    trace = f.trace;
}

/** Destroys the object in the slot of each signal that an action leads to. */
template<typename Media, typename MakeAction>
void destroyEverywhere(const PreparationOf<Media> &given, const MakeAction &makeAction)
{
    QStringList whole;
    record<Media>(whole, given, makeAction(), -1);
    QVERIFY(std::any_of(whole.cbegin(), whole.cend(), isSignal));
    for (qsizetype end = 0; end < whole.size() && !QTest::currentTestFailed(); ++end) {
        if (!isSignal(whole.at(end))) {
            continue;
        }
        QStringList trace;
        record<Media>(trace, given, makeAction(), end);
        QCOMPARE(trace, whole.mid(0, end + 1) + (QStringList{"mmr_context_destroy", "mmr_disconnect"}));
    }
}

Steps<P> playerSteps()
{
    const auto paused = after(started, call(&P::pause));
    const auto known = after(started, reported(&N::durationChanged, 900u), reported(&N::seekableChanged, true),
                             reported(&N::bufferStatusChanged, BufferStatus::Playing));
    const auto idlePlaying = after(known, reported(&N::trackChanged, 2u));
    const QUrl other(QStringLiteral("file:///music/b.ogg"));
    return {
        {"prepare", {withSource, call(&P::prepare)}},
        {"play, unprepared", {withSource, call(&P::play)}},
        {"play, paused", {paused, call(&P::play)}},
        {"pause, unprepared", {withSource, call(&P::pause)}},
        {"pause, started", {started, call(&P::pause)}},
        {"stop", {started, call(&P::stop)}},
        {"reset", {idlePlaying, call(&P::reset)}},
        {"seek", {started, call(&P::seek, 2u, 0u)}},
        {"speed, paused", {paused, call(&P::setSpeed, 2.0)}},
        {"source", {idlePlaying, call(&P::setSourceUrl, other)}},
        {"audio output off", {idlePlaying, call(&P::setAudioOutput, AudioOutput::None)}},
        {"video output off",
         {after(startedWithVideo, reported(&N::trackChanged, 2u)), call(&P::setVideoOutput, VideoOutput::None)}},
        {"video output, another",
         {after(startedWithVideo, reported(&N::trackChanged, 2u)),
          call(&P::setVideoOutput, VideoOutput::SecondaryDisplay)}},
        {"window", {newPlayer, call(&P::setWindowId, QStringLiteral("w"))}},
        {"window group", {newPlayer, call(&P::setWindowGroupId, QStringLiteral("g"))}},
        {"caption window", {newPlayer, call(&P::setClosedCaptionWindowId, QStringLiteral("c"))}},
        {"captions", {started, call(&P::setClosedCaptionEnabled, false)}},
        {"caption index", {started, call(&P::setClosedCaptionIndex, 1u)}},
        {"caption url", {started, call(&P::setClosedCaptionUrl, 1u, QUrl(QStringLiteral("file:///a.srt")))}},
        {"volume", {started, call(&P::setVolume, 0.5)}},
        {"auto pause", {started, call(&P::setAutoPause, true)}},
        {"equalizer", {started, call(&P::setEqualizerPreset, EqualizerPreset::Rock)}},
        {"audio manager", {started, call(&P::setAudioManagerHandle, 5u)}},
        {"repeat mode", {started, call(&P::setRepeatMode, RepeatMode::All)}},
        {"interval", {started, call(&P::setStatusInterval, 50u)}},
        {"idle", {idlePlaying, reported(&N::idle)}},
        {"completed", {started, reported(&N::playbackCompleted)}},
        {"error", {started, reported(&N::error, MediaError::Read, 70u, 1u)}},
        {"speed reported, started", {started, reported(&N::speedChanged, 0)}},
        {"speed reported, paused", {paused, reported(&N::speedChanged, 1000)}},
        {"position", {started, reported(&N::positionChanged, 70u)}},
        {"duration", {started, reported(&N::durationChanged, 70u)}},
        {"track", {started, reported(&N::trackChanged, 2u)}},
        {"track count", {started, reported(&N::trackCountChanged, 2u)}},
        {"buffering", {started, reported(&N::buffering, 0.5)}},
        {"buffer status", {started, reported(&N::bufferStatusChanged, BufferStatus::Buffering)}},
        {"seekable", {started, reported(&N::seekableChanged, true)}},
        {"metadata", {started, reported(&N::metaDataChanged, QVariantMap())}},
        {"video size", {started, reported(&N::videoDimensionsChanged, QSize(4, 3))}},
    };
}

void withFile(MediaFixture<R> &f)
{
    f.media.setOutputUrl(QUrl(QStringLiteral("file:///rec/a.wav")));
}

void recording(MediaFixture<R> &f)
{
    withFile(f);
    f.media.record();
}

Steps<R> recorderSteps()
{
    return {
        {"prepare", {withFile, call(&R::prepare)}},
        {"record", {withFile, call(&R::record)}},
        {"pause", {recording, call(&R::pause)}},
        {"reset", {recording, call(&R::reset)}},
        {"channels", {recording, call(&R::setAudioChannelConfiguration, AudioChannelConfiguration::Mono)}},
        {"audio manager", {recording, call(&R::setAudioManagerHandle, 5u)}},
        {"interval", {recording, call(&R::setStatusInterval, 50u)}},
        {"idle", {recording, reported(&N::idle)}},
        {"stopped", {recording, reported(&N::stopped)}},
        {"error", {recording, reported(&N::error, MediaError::Read, 70u, 1u)}},
        {"duration", {recording, reported(&N::positionChanged, 70u)}},
        {"level", {recording, reported(&N::volumeLevelChanged, 0.5)}},
    };
}

template<typename Media>
void stepRows(const Steps<Media> &steps)
{
    QTest::addColumn<Step<Media>>("data");
    for (const auto &[name, step] : steps) {
        QTest::newRow(name.c_str()) << step;
    }
}

template<typename Media>
void tryStep()
{
    QFETCH(Step<Media>, data);
    destroyEverywhere<Media>(data.given, [&] { return data.act; });
}

template<typename Media>
void tryPublication()
{
    QFETCH(Publication<Media>, data);
    // Each object has another context, but all of them the same broker.
    RuntimeBroker broker;
    destroyEverywhere<Media>(data.given, [&] {
        return [&](MediaFixture<Media> &f) {
            const QString folder = voro::test::contextFolder(f.contextName);
            for (const QString &object : data.objects.split(QStringLiteral(" | "))) {
                broker.publish(folder, object);
            }
            const auto isOver = [&] { return !f.owned || f.trace.contains(data.last); };
            return QTest::qWaitFor(isOver) ? MediaError::None : MediaError::Internal;
        };
    });
}

/** The names of the signals that come of all steps, whole. */
template<typename Media>
std::set<QByteArray> emittedSignals(const Steps<Media> &steps)
{
    std::set<QByteArray> names;
    for (const auto &[name, step] : steps) {
        QStringList trace;
        record<Media>(trace, step.given, step.act, -1);
        for (const QString &line : trace) {
            if (isSignal(line)) {
                names.insert(line.section(QLatin1Char('('), 0, 0).toLatin1());
            }
        }
    }
    return names;
}

std::set<QByteArray> declaredSignals(const QMetaObject &metaObject)
{
    std::set<QByteArray> names;
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i) {
        if (metaObject.method(i).methodType() == QMetaMethod::Signal) {
            names.insert(metaObject.method(i).name());
        }
    }
    return names;
}

} // namespace

/** Players and recorders that are destroyed in slots of their own signals. */
class LifetimeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { qunsetenv("VORO_RUNTIME_DIR"); }

    void player_data() { stepRows(playerSteps()); }
    void player() { tryStep<P>(); }
    void recorder_data() { stepRows(recorderSteps()); }
    void recorder() { tryStep<R>(); }
    void everySignal_isTried();
    void playerOfPublications_data();
    void playerOfPublications() { tryPublication<P>(); }
    void recorderOfPublications_data();
    void recorderOfPublications() { tryPublication<R>(); }
};

void LifetimeTest::everySignal_isTried()
{
    std::set<QByteArray> ofPlayer = declaredSignals(P::staticMetaObject);
    ofPlayer.erase("mediaErrorChanged"); // It is never emitted.
    QVERIFY(emittedSignals(playerSteps()) == ofPlayer);
    QVERIFY(emittedSignals(recorderSteps()) == declaredSignals(R::staticMetaObject));
}

void LifetimeTest::playerOfPublications_data()
{
    QTest::addColumn<Publication<P>>("data");
    QTest::newRow("playback") << Publication<P>{
        started,
        QStringLiteral("play-queue current:n:2 total:n:2 | "
                       "q2 url::/b.ogg md_title_duration:n:900 md_title_seekable:b:true md_video_width:n:4 "
                       "md_video_height:n:3 | state state::playing speed:n:2000 | "
                       "status position::70 bufferlevel::1/2 bufferstatus::playing"),
        QStringLiteral("bufferStatusChanged(Playing)")};
    QTest::newRow("hold") << Publication<P>{started, QStringLiteral("state state::playing speed:n:0"),
                                            QStringLiteral("speedChanged(0)")};
    QTest::newRow("end") << Publication<P>{
        started, QStringLiteral("state state::stopped speed:n:1000 error:n:0 error_pos::1:900"),
        QStringLiteral("playbackCompleted()")};
    QTest::newRow("error") << Publication<P>{
        started, QStringLiteral("state state::stopped speed:n:1000 error:n:5 error_pos::1:900"),
        QStringLiteral("error(UnsupportedMediaType, uint 900)")};
    QTest::newRow("idle") << Publication<P>{started, QStringLiteral("state state::idle speed:n:0"),
                                            QStringLiteral("speedChanged(0)")};
}

void LifetimeTest::recorderOfPublications_data()
{
    QTest::addColumn<Publication<R>>("data");
    QTest::newRow("recording") << Publication<R>{
        withFile, QStringLiteral("state state::playing speed:n:1000 | status position::70 volume::1/2"),
        QStringLiteral("recordingLevelChanged(0.5)")};
    QTest::newRow("idle") << Publication<R>{recording, QStringLiteral("state state::idle speed:n:0"),
                                            QStringLiteral("mediaStateChanged(Unprepared)")};
}

QTEST_GUILESS_MAIN(LifetimeTest)
#include "tst_lifetime.moc"
