#include "private/Logger.h"
#include "private/MmrContextNotifier.h"
#include "RuntimeBroker.h"
#include "ScriptedRenderer.h"
#include "SignalLog.h"

#include <voro/PpsObject.h>

#include <QtTest/QtTest>

#include <LogCatcher.h>
#include <Rows.h>

#include <functional>
#include <memory>
#include <utility>

using namespace voro::multimedia;

using N = MmrContextNotifier;

namespace {

struct CloseConnection {
    void operator()(mmr_connection_t *connection) const { mmr_disconnect(connection); }
    void operator()(mmr_context_t *context) const { mmr_context_destroy(context); }
};

/** A monitor on a context of the scripted renderer, whose objects a real broker holds. */
class MonitorFixture {
public:
    MonitorFixture()
    {
        notifier.monitor(context.get());
        trace.clear();
    }

    /** Publishes an object of the context and waits until the monitor has handled it. */
    void publish(const QString &object)
    {
        const QList<voro::PpsObject *> watched = notifier.findChildren<voro::PpsObject *>();
        QSignalSpy all(watched.at(0), &voro::PpsObject::readyRead);
        QSignalSpy state(watched.at(1), &voro::PpsObject::readyRead);
        broker.publish(folder, object);
        QVERIFY(all.wait());
        if (object.contains(QLatin1String(" error:")) && state.isEmpty()) {
            QVERIFY(state.wait());
        }
    }

    QStringList trace;
    RuntimeBroker broker;
    voro::test::LogCatcher log;
    voro::test::ScriptedRenderer renderer{trace};
    std::unique_ptr<mmr_connection_t, CloseConnection> connection{mmr_connect(nullptr)};
    std::unique_ptr<mmr_context_t, CloseConnection> context{mmr_context_create(connection.get(), "c", 0, 0700)};
    const QString folder = voro::test::contextFolder(QStringLiteral("c"));
    MmrContextNotifier notifier{nullptr};
    SignalLog emitted{&notifier, trace};
};

using Action = std::function<MediaError::Type(MonitorFixture &)>;

template<typename... Parameters, typename... Arguments>
Action call(MediaError::Type (N::*method)(Parameters...), Arguments... arguments)
{
    return [=](MonitorFixture &f) { return (f.notifier.*method)(arguments...); };
}

/**
 * What is published before and then, one object after another with " | " between, and the signals, calls and warnings
 * that have to come of the latter.
 */
using Table = Rows<QString, QString, QString>;

QStringList parts(const QString &text)
{
    return text.split(QStringLiteral(" | "), Qt::SkipEmptyParts);
}

} // namespace

class MmrContextNotifierTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void state_data()
    {
        const Table row("before", "then", "outcome");
        const char *playing = "state state::playing speed:n:1000";
        row("playing", "", playing, "playing()");
        row("playing, again", playing, playing, "");
        row("playing at no speed", "", "state state::playing speed:n:0", "paused() | speedChanged(0)");
        row("a missing speed is none", "", "state state::playing", "paused() | speedChanged(0)");
        row("from no speed on", "state state::playing speed:n:0", "state speed:n:1000", "speedChanged(1000)");
        row("to no speed", playing, "state speed:n:0", "speedChanged(0)");
        row("stopped", playing, "state state::stopped", "stopped()");
        row("idle", playing, "state state::idle", "idle()");
        row("another word is idle", playing, "state state::broken", "idle()");
        row("completed", playing, "state state::stopped error:n:0", "playbackCompleted()");
        row("playing after it was completed", "state state::stopped speed:n:1000 error:n:0",
            "state -error state::playing", "playing()");
        row("error", playing, "state state::stopped error:n:8", "error(Read, 0, 1)");
        row("error, track and position", playing, "state state::stopped error:n:8 error_pos::2:4500",
            "error(Read, 4500, 2)");
        row("error, position of three parts", playing, "state state::stopped error:n:8 error_pos::1:2:3",
            "error(Read, 0, 1) | "
            "W MmrContextNotifier::onPpsError: Unable to decode error position. error_pos=\"1:2:3\"");
    }

    void state() { tryRow(); }

    // Also from a slot, and when a slot runs an event loop in which the next state is read.
    void state_isReportedAnew_onceItWasForgotten()
    {
        const QString playing = QStringLiteral("state state::playing speed:n:1000");
        const QString held = QStringLiteral("state state::playing speed:n:0");
        const QString stopped = QStringLiteral("state state::stopped speed:n:1000");
        MonitorFixture f;
        const auto thenOnce = [&f](const std::function<void()> &act) {
            f.emitted.setThen([act, isDone = false]() mutable {
                if (!std::exchange(isDone, true)) {
                    act();
                }
            });
        };
        f.publish(playing);
        f.notifier.forgetPlaying();
        f.publish(playing);
        QCOMPARE(f.trace, QStringList(2, "playing()"));
        f.publish(held);
        f.notifier.forgetHold();
        f.publish(held);
        QCOMPARE(f.trace.mid(2), QStringList(2, "speedChanged(0)"));

        f.publish(stopped);
        f.trace.clear();
        thenOnce([&f] { f.notifier.forgetPlaying(); });
        f.publish(playing);
        f.publish(playing);
        QCOMPARE(f.trace, QStringList(2, "playing()"));

        f.publish(stopped);
        f.trace.clear();
        thenOnce([&] {
            f.publish(held);
            f.publish(stopped);
            f.publish(held);
        });
        f.publish(playing);
        QCOMPARE(f.trace, (QStringList{"playing()", "speedChanged(0)", "stopped()", "speedChanged(1000)", "paused()",
                                       "speedChanged(0)"}));
        f.publish(playing);
        QCOMPARE(f.trace.mid(6), QStringList("speedChanged(1000)"));

        // Of two objects that were read together, the second is the older state by the time of its turn.
        f.trace.clear();
        thenOnce([&] { f.publish(stopped); });
        f.broker.publish(f.folder, QStringLiteral("q1 md_title_duration:n:900"));
        f.publish(held);
        QCOMPARE(f.trace.mid(0, 2), (QStringList{"durationChanged(900)", "stopped()"}));
        QVERIFY(f.trace.size() == 3 && f.trace.last().startsWith(QLatin1String("metaDataChanged(")));

        // What has no state is no playing either.
        f.publish(playing);
        f.notifier.forgetPlaying();
        f.trace.clear();
        f.publish(QStringLiteral("state -state speed:n:1000"));
        QCOMPARE(f.trace, QStringList("idle()"));
    }

    void status_data()
    {
        const Table row("before", "then", "outcome");
        const char *prefix = "W MmrContextNotifier::onPpsStatusChanged: ";
        const auto warned = [&](const char *name, const char *then, const char *warning) {
            row(name, "", then, QByteArray(prefix) + warning);
        };
        row("position", "", "status position::4500", "positionChanged(4500)");
        row("position, same", "status position::4500", "status position::4500", "");
        row("position of a track", "", "status position::2:4500", "positionChanged(4500)");
        row("missing position", "status position::4500", "*status bufferstatus::idle", "positionChanged(0)");
        warned("position of three parts", "status position::1:2:3",
               "Unable to decode error position. error_pos=\"1:2:3\"");
        row("level", "", "status bufferlevel::512/1024", "buffering(0.5)");
        row("level, same", "status bufferlevel::512/1024", "status bufferlevel::1/2", "");
        row("level above the capacity", "", "status bufferlevel::300/2", "buffering(100)");
        row("level above the capacity, another", "status bufferlevel::300/2", "status bufferlevel::400/2",
            "buffering(100)");
        warned("level of nothing", "status bufferlevel::10/0",
               "Unable to calculate buffer level; division by zero. bufferlevel=\"10/0\"");
        warned("level that is none", "status bufferlevel::10", "Unable to decode buffer level. bufferlevel=\"10\"");
        row("buffer status", "",
            "status bufferstatus::buffering | status bufferstatus::playing | status bufferstatus::idle",
            "bufferStatusChanged(Buffering) | bufferStatusChanged(Playing) | bufferStatusChanged(Idle)");
        row("buffer status, same", "", "status bufferstatus::idle", "");
        warned("buffer status that is none", "status bufferstatus::paused",
               "Unable to buffer status. bufferstatus=\"paused\"");
        row("volume", "", "status volume::45/100", "volumeLevelChanged(0.45)");
        warned("volume of nothing", "status volume::1/0",
               "Unable to calculate volume level; division by zero. volume=\"1/0\"");
        warned("volume that is none", "status volume::1/2/3", "Unable to decode volume level. volume=\"1/2/3\"");
        row("all at once", "", "status position::1 bufferlevel::1/4 bufferstatus::playing volume::3/4",
            "positionChanged(1) | buffering(0.25) | bufferStatusChanged(Playing) | volumeLevelChanged(0.75)");
    }

    void status() { tryRow(); }

    void metaData_data()
    {
        const Table row("before", "then", "outcome");
        row("title alone", "", "q1 md_title_name::T", "metaDataChanged(QMap((title, QVariant(QString, T))))");
        row("another track's", "", "q2 md_title_name::T", "");
        row("duration and seekable", "", "q1 md_title_duration:n:900 md_title_seekable:b:true",
            "durationChanged(900) | seekableChanged(true) | metaDataChanged(QMap((duration, QVariant(int, 900))"
            "(seekable, QVariant(bool, true))))");
        row("the same again", "q1 md_title_duration::900", "q1 md_title_duration::900",
            "metaDataChanged(QMap((duration, QVariant(QString, 900))))");
        row("every name", "",
            "q1 md_title_album::a md_title_artist::b md_title_bitrate::c md_title_comment::d md_title_disc::e "
            "md_title_genre::f md_title_samplerate::g md_title_track::h url::i other::j",
            "metaDataChanged(QMap((album, QVariant(QString, a))(artist, QVariant(QString, b))"
            "(bit_rate, QVariant(QString, c))(description, QVariant(QString, d))(disc, QVariant(QString, e))"
            "(genre, QVariant(QString, f))(other, QVariant(QString, j))(sample_rate, QVariant(QString, g))"
            "(track, QVariant(QString, h))(uri, QVariant(QString, i))))");

        const auto size = [&](const char *name, const char *width, const char *height, const char *pixelWidth,
                              const char *pixelHeight, const char *outcome) {
            QStringList attributes{QStringLiteral("q1")};
            QStringList values;
            const std::tuple<const char *, const char *, const char *> all[] = {
                {"md_video_height", "height", height},
                {"md_video_pixel_height", "pixel_height", pixelHeight},
                {"md_video_pixel_width", "pixel_width", pixelWidth},
                {"md_video_width", "width", width},
            };
            for (const auto &[attribute, key, value] : all) {
                if (!*value) {
                    continue;
                }
                attributes += QStringLiteral("%1::%2").arg(QLatin1String(attribute), QLatin1String(value));
                values += QStringLiteral("(%1, QVariant(QString, %2))").arg(QLatin1String(key), QLatin1String(value));
            }
            const QString metaData = QStringLiteral("metaDataChanged(QMap(%1))").arg(values.join(QString()));
            row(name, "", attributes.join(QLatin1Char(' ')), QString::fromLatin1(outcome) + metaData);
        };
        size("wide pixels", "720", "480", "8", "9", "videoDimensionsChanged(QSize(720, 540)) | ");
        size("square pixels", "720", "480", "10", "10", "videoDimensionsChanged(QSize(720, 480)) | ");
        size("pixels shaped as the frame", "720", "480", "3", "2", "videoDimensionsChanged(QSize(720, 480)) | ");
        size("high pixels, truncated", "5", "5", "3", "2", "videoDimensionsChanged(QSize(7, 5)) | ");
        size("no pixel size", "720", "480", "", "", "videoDimensionsChanged(QSize(720, 480)) | ");
        size("half a pixel size", "720", "480", "8", "", "videoDimensionsChanged(QSize(720, 480)) | ");
        size("a pixel without width", "720", "480", "0", "9", "videoDimensionsChanged(QSize(720, 480)) | ");
        size("no height", "720", "", "8", "9", "");
    }

    void metaData() { tryRow(); }

    void playQueue_data()
    {
        const Table row("before", "then", "outcome");
        row("next track", "q2 md_title_name::B", "play-queue current:n:2 total:n:3",
            "trackChanged(2) | metaDataChanged(QMap((title, QVariant(QString, B)))) | trackCountChanged(3)");
        row("next track without metadata", "", "play-queue current:n:2", "trackChanged(2)");
        row("its metadata is followed", "play-queue current:n:2", "q1 md_title_name::A | q2 md_title_name::B",
            "metaDataChanged(QMap((title, QVariant(QString, B))))");
        row("the same again", "play-queue current:n:2 total:n:3", "play-queue current:n:2 total:n:3", "");
        row("first track is known", "", "play-queue current:n:1 total:n:0", "");
    }

    void playQueue() { tryRow(); }

    void parameters_data()
    {
        const Table row("before", "then", "outcome");
        row("input, new: sent back", "", "input repeat::track", "mmr_input_parameters repeat=track");
        row("input, known", "input repeat::track", "input repeat::track", "");
        row("input, changed: all are sent", "input a::1 repeat::track", "input repeat::all",
            "mmr_input_parameters a=1 repeat=all");
        row("input, deleted: forgotten", "input a::1 b::2", "input -b | input a::3", "mmr_input_parameters a=3");
        row("input, emptied: forgotten", "input a::1", "*input | input b::2", "mmr_input_parameters b=2");
        row("track, new: sent back", "", "p12 name::value", "mmr_track_parameters 12 name=value");
        row("track, without a caption output", "", "p1 subpicture_index::1 subpicture_url::/a",
            "mmr_track_parameters 1");
        row("track, known", "p1 name::value", "p1 name::value", "");
        // Two attributes and one track; the count that is compared is required.
        row("track, known with two attributes: sent again", "p1 a::1 b::2", "p1 a::1",
            "mmr_track_parameters 1 a=1 b=2");
        row("track, deleted: forgotten", "p1 a::1 | -p1", "p1 b::2", "mmr_track_parameters 1 b=2");
        row("not a track", "", "px name::value", "");
        row("not a track either", "", "p1x name::value | p name::value", "");
    }

    void parameters() { tryRow(); }

    void command_data()
    {
        const Rows<Action, Action, QString> row("given", "act", "outcome");
        const Action nothing = [](MonitorFixture &) { return MediaError::None; };
        const auto failing = [](const char *function, MediaError::Type error) -> Action {
            return [=](MonitorFixture &f) {
                f.renderer.fail(QLatin1String(function), error);
                return MediaError::None;
            };
        };
        const auto both = [](const Action &first, const Action &second) -> Action {
            return [=](MonitorFixture &f) { return first(f), second(f); };
        };
        const QString url = QStringLiteral("u");
        const auto parameter = [](unsigned int track, const char *name) {
            return call(&N::updateTrackParameter, track, QString::fromLatin1(name), QStringLiteral("v"));
        };
        const auto attach = [&](const char *type) { return call(&N::attachInput, url, QString::fromLatin1(type)); };

        row("attach a medium", nothing, attach("autolist"), "mmr_input_attach u autolist | mmr_track_parameters 0");
        row("attach a medium with parameters of track 1", parameter(1, "n"), attach("autolist"),
            "mmr_input_parameters n=v | mmr_input_attach u autolist | mmr_track_parameters 0");
        row("attach a playlist", parameter(1, "subpicture_url"), attach("playlist"),
            "mmr_track_parameters 0 subpicture_url=v | mmr_input_attach u playlist | mmr_track_parameters 0");
        row("attach a recording source", parameter(1, "n"), attach("track"),
            "mmr_input_attach u track | mmr_track_parameters 0");
        row("attach, refused", failing("mmr_input_attach", MediaError::Permission), attach("track"),
            "mmr_input_attach u track | mmr_track_parameters 0 | -> Permission");
        row("attach, defaults refused", failing("mmr_track_parameters", MediaError::Internal), attach("track"),
            "mmr_input_attach u track | mmr_track_parameters 0 | "
            "C MmrContextNotifier::updateTrackParameters: Unable to set track parameters. track=0");
        row("seek", nothing, call(&N::seek, 3u, 1500u), "mmr_seek 3:1500");
        row("seek with parameters", parameter(3, "n"), call(&N::seek, 3u, 1500u),
            "mmr_track_parameters 3 n=v | mmr_seek 3:1500");
        row("seek, parameters invalid: tried for the next track",
            both(parameter(3, "n"), failing("mmr_track_parameters", MediaError::InvalidParameter)),
            call(&N::seek, 3u, 0u),
            "mmr_track_parameters 3 n=v | mmr_track_parameters 0 n=v | "
            "C MmrContextNotifier::updateTrackParameters: Unable to set track parameters. track=3 | "
            "C MmrContextNotifier::updateTrackParameters: Unable to set track parameters. track=0 | "
            "-> InvalidParameter");
        row("seek, parameters refused", both(parameter(3, "n"), failing("mmr_track_parameters", MediaError::Read)),
            call(&N::seek, 3u, 0u),
            "mmr_track_parameters 3 n=v | "
            "C MmrContextNotifier::updateTrackParameters: Unable to set track parameters. track=3 | -> Read");
        row("seek, refused", failing("mmr_seek", MediaError::InvalidState), call(&N::seek, 3u, 5u),
            "mmr_seek 3:5 | C MmrContextNotifier::seek: Error seeking. track=3, position=5, error=InvalidState | "
            "-> InvalidState");
        const auto input = [](const char *value) {
            return call(&N::updateInputParameter, QStringLiteral("n"), QString::fromLatin1(value));
        };
        row("input parameter, empty: not sent", nothing, input(""), "mmr_input_parameters");
        row("input parameter, refused: kept", both(failing("mmr_input_parameters", MediaError::Read), input("v")),
            call(&N::updateInputParameter, QStringLiteral("m"), QStringLiteral("w")),
            "mmr_input_parameters m=w n=v | "
            "C MmrContextNotifier::updateInputParameter: Unable to set input parameters. | -> Read");
        const auto badKey = [](MonitorFixture &f) {
            f.renderer.failKey(QStringLiteral("n"));
            return MediaError::None;
        };
        row("input parameter, bad key", badKey, input("v"),
            "W MmrContextNotifier::createDictionaryFromMap: Unable to create parameter. \"n\"=\"v\" | "
            "-> InvalidParameter");
        row("input parameters: not kept", call(&N::updateInputParameters, QVariantMap{{QStringLiteral("a"), 1}}),
            input("v"), "mmr_input_parameters n=v");
        const auto idle = [](MonitorFixture &f) {
            f.publish(QStringLiteral("state state::idle speed:n:1000"));
            return MediaError::None;
        };
        row("track parameter while idle: kept for later", idle, parameter(1, "n"), "");
        row("track parameter that was kept", both(idle, parameter(1, "n")), attach("autolist"),
            "mmr_input_parameters n=v | mmr_input_attach u autolist | mmr_track_parameters 0");
    }

    void command()
    {
        QFETCH(Action, given);
        QFETCH(Action, act);
        QFETCH(QString, outcome);
        MonitorFixture f;
        given(f);
        f.trace.clear();
        f.log.takeLines();
        const MediaError::Type result = act(f);
        QStringList found = f.trace + f.log.takeLines();
        if (result != MediaError::None) {
            found += QStringLiteral("-> ") + QLatin1String(keyName(result));
        }
        QCOMPARE(found, parts(outcome));
        QCOMPARE(f.renderer.dictionaryCount(), 0);
    }

    void trackParameters_areTakenOver_andRolledBack()
    {
        MonitorFixture f;
        // Published, but not yet read by the monitor.
        f.broker.publish(f.folder, QStringLiteral("p2 old::1"));
        QCOMPARE(f.notifier.updateTrackParameter(2, "new", "2"), MediaError::None);
        QCOMPARE(f.trace, QStringList(QStringLiteral("mmr_track_parameters 2 new=2 old=1")));
        const QVariantMap known = f.notifier.trackParameters(2);
        f.renderer.fail("mmr_track_parameters", MediaError::Read);
        QCOMPARE(f.notifier.updateTrackParameter(2, "new", "3"), MediaError::Read);
        QCOMPARE(f.notifier.trackParameters(2), known);
        QCOMPARE(f.notifier.updateTrackParameter(2, "newer", "4"), MediaError::Read);
        QCOMPARE(f.notifier.trackParameters(2), known);
    }

    void outputId_isStored_onlyOnSuccess()
    {
        MonitorFixture f;
        int id = 7;
        QCOMPARE(f.notifier.attachOutput("u", "subpicture", nullptr), MediaError::None);
        QCOMPARE(f.notifier.attachOutput("u", "subpicture", &id), MediaError::None);
        QCOMPARE(id, 1);
        f.trace.clear();
        // With a caption output these are sent for every track.
        f.notifier.updateTrackParameters(1, {{QStringLiteral("subpicture_index"), 2}});
        QCOMPARE(f.trace, QStringList(QStringLiteral("mmr_track_parameters 1 subpicture_index=2")));
        f.publish(QStringLiteral("state state::idle speed:n:1000"));
        f.trace.clear();
        f.notifier.updateTrackParameters(1, {{QStringLiteral("subpicture_index"), 2}});
        QCOMPARE(f.trace, QStringList(QStringLiteral("mmr_track_parameters 1")));

        f.renderer.fail("mmr_output_attach", MediaError::OutputUnavailable);
        QCOMPARE(f.notifier.attachOutput("u", "video", &id), MediaError::OutputUnavailable);
        QCOMPARE(id, 1);
        QCOMPARE(f.log.takeLines(), QStringList(QStringLiteral("C MmrContextNotifier::attachOutput: Unable to attach "
                                                               "output. url=\"u\", type=\"video\"")));
    }

    void monitor_replacesItsSubscriptions_onlyForAnotherContext()
    {
        MonitorFixture f;
        const auto watched = [&] {
            QStringList paths;
            for (const auto *object : f.notifier.findChildren<voro::PpsObject *>()) {
                paths += object->path();
            }
            return paths;
        };
        const QPointer<QObject> subscription = f.notifier.findChild<voro::PpsObject *>();
        QVERIFY(f.notifier.monitor(f.context.get()));
        QVERIFY(subscription);

        const std::unique_ptr<mmr_context_t, CloseConnection> other(
            mmr_context_create(f.connection.get(), "d", 0, 0700));
        QVERIFY(f.notifier.monitor(other.get()));
        QVERIFY(!subscription);
        const QString folder = voro::test::contextFolder(QStringLiteral("d"));
        QCOMPARE(watched(), (QStringList{folder + "/.all", folder + "/state?delta,f=error"}));

        QVERIFY(f.notifier.monitor(nullptr));
        QCOMPARE(watched(), QStringList());
        QCOMPARE(f.notifier.lastError(), MediaError::None);
    }

    void monitor_fails_withoutPathOrBroker()
    {
        MonitorFixture f;
        f.notifier.monitor(nullptr);
        f.renderer.fail("mmr_context_path", MediaError::Internal);
        QVERIFY(!f.notifier.monitor(f.context.get()));
        QCOMPARE(f.log.takeLines(), QStringList(QStringLiteral("C MmrContextNotifier::monitor: Unable to retrieve the "
                                                               "multimedia context path")));
        QCOMPARE(f.notifier.lastError(), MediaError::Internal);

        f.renderer.succeed("mmr_context_path");
        f.notifier.monitor(nullptr);
        const QTemporaryDir empty;
        qputenv("VORO_RUNTIME_DIR", empty.path().toUtf8());
        QVERIFY(!f.notifier.monitor(f.context.get()));
        bool ok = true;
        QVERIFY(f.notifier.toParameterMap(QStringLiteral("q1"), &ok).isEmpty());
        QVERIFY(!ok);
    }

    void readyRead_isRefused_fromAnythingElse()
    {
        MonitorFixture f;
        QVERIFY(QMetaObject::invokeMethod(&f.notifier, "onReadyRead"));
        QCOMPARE(f.log.takeLines(),
                 QStringList(QStringLiteral("W MmrContextNotifier::onReadyRead: Signal sender was not a pps object")));
    }

private:
    void tryRow()
    {
        QFETCH(QString, before);
        QFETCH(QString, then);
        QFETCH(QString, outcome);
        MonitorFixture f;
        for (const QString &object : parts(before)) {
            f.publish(object);
        }
        f.trace.clear();
        f.log.takeLines();
        for (const QString &object : parts(then)) {
            f.publish(object);
        }
        QCOMPARE(f.trace + f.log.takeLines(), parts(outcome));
    }
};

QTEST_GUILESS_MAIN(MmrContextNotifierTest)
#include "tst_mmrcontextnotifier.moc"
