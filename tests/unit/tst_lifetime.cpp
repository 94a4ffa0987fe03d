#include "PlayerFixture.h"
#include "RuntimeBroker.h"

#include <multimedia/AudioRecorder.h>

using namespace voro::multimedia;

using P = MediaPlayer;
using R = AudioRecorder;

namespace {

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

void withFile(MediaFixture<R> &f)
{
    f.media.setOutputUrl(QUrl(QStringLiteral("file:///rec/a.wav")));
}

void recording(MediaFixture<R> &f)
{
    withFile(f);
    f.media.record();
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

} // namespace

/**
 * Players and recorders that are destroyed in slots of their own signals, when the renderer's objects lead to these;
 * the rows of their own tests try what commands and the monitor lead to.
 */
class LifetimeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void playerOfPublications_data();
    void playerOfPublications() { tryPublication<P>(); }
    void recorderOfPublications_data();
    void recorderOfPublications() { tryPublication<R>(); }
};

void LifetimeTest::playerOfPublications_data()
{
    const Rows<Publication<P>> row("data");
    row("playback",
        Publication<P>{
            started,
            QStringLiteral("play-queue current:n:2 total:n:2 | "
                           "q2 url::/b.ogg md_title_duration:n:900 md_title_seekable:b:true md_video_width:n:4 "
                           "md_video_height:n:3 | state state::playing speed:n:2000 | "
                           "status position::70 bufferlevel::1/2 bufferstatus::playing"),
            QStringLiteral("bufferStatusChanged(Playing)")});
    row("hold",
        Publication<P>{started, QStringLiteral("state state::playing speed:n:0"), QStringLiteral("speedChanged(0)")});
    row("end", Publication<P>{started, QStringLiteral("state state::stopped speed:n:1000 error:n:0 error_pos::1:900"),
                              QStringLiteral("playbackCompleted()")});
    row("error", Publication<P>{started, QStringLiteral("state state::stopped speed:n:1000 error:n:5 error_pos::1:900"),
                                QStringLiteral("error(UnsupportedMediaType, uint 900)")});
    row("idle",
        Publication<P>{started, QStringLiteral("state state::idle speed:n:0"), QStringLiteral("speedChanged(0)")});
}

void LifetimeTest::recorderOfPublications_data()
{
    const Rows<Publication<R>> row("data");
    row("recording",
        Publication<R>{withFile, QStringLiteral("state state::playing speed:n:1000 | status position::70 volume::1/2"),
                       QStringLiteral("recordingLevelChanged(0.5)")});
    row("idle", Publication<R>{recording, QStringLiteral("state state::idle speed:n:0"),
                               QStringLiteral("mediaStateChanged(Unprepared)")});
}

QTEST_GUILESS_MAIN(LifetimeTest)
#include "tst_lifetime.moc"
