#include "LogCatcher.h"
#include "private/NowPlayingControllerPrivate.h"
#include "ScriptedService.h"
#include "SignalLog.h"

#include <multimedia/NowPlayingController.h>

#include <QtTest/QtTest>

#include <Rows.h>

#include <functional>
#include <memory>

using namespace voro::multimedia;

using C = NowPlayingController;

namespace {

const QString ControlPath = QStringLiteral("/pps/services/multimedia/mediacontroller/control");

/** What is played, as the service tells it. */
const QString Update =
    QStringLiteral("msg::md_update|dat:json:{\"artist\":\"A\",\"album\":\"B\",\"track\":\"T\",\"track_number\":\"3\","
                   "\"nextEnabled\":true,\"prevEnabled\":true,\"repeat_mode\":\"all\",\"shuffle_mode\":\"off\","
                   "\"position\":5,\"duration\":4000000000,\"albumArtwork\":\"file:///a.png\"}");
/** A key of ours that every subscriber of a test understands. */
const QString Marker = QStringLiteral("msg::m_state|dat::trackchange");

/** A broker with a service and a controller, and what the service was told. */
struct Fixture {
    voro::test::LogCatcher log;
    RuntimeBroker broker;
    ScriptedService service{broker, ControlPath};
    std::unique_ptr<C> owned = std::make_unique<C>();
    C &controller = *owned;
};

/** The same with somebody who listens to every signal. */
struct SubscribedFixture : Fixture {
    SubscribedFixture() { service.next(2); }

    /** Sends messages to the controller, and returns when they were handled. */
    void receive(const QStringList &messages)
    {
        for (const QString &message : messages) {
            service.send(message);
        }
        service.send(Marker);
        QTRY_COMPARE(trace.count(QStringLiteral("trackChanged()")), messages.count(Marker) + 1);
        trace.removeLast();
    }

    QStringList trace;
    SignalLog emitted{&controller, trace};
};

using Command = std::function<MediaError::Type(C &)>;
/** Reads a property of the controller. */
using Getter = QVariant (*)(const C &);

template<auto Function>
QVariant get(const C &controller)
{
    return QVariant::fromValue((controller.*Function)());
}

} // namespace

class NowPlayingControllerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void command_isWrittenAsItStands_data()
    {
        const Rows<Command, QString> add("command", "message");
        const auto row = [&](const char *message, const Command &command) { add(message, command, message); };
        row("msg::m_play", [](C &c) { return c.play(); });
        row("msg::m_pause", [](C &c) { return c.pause(); });
        row("msg::m_playpause", [](C &c) { return c.playPause(); });
        row("msg::m_stop", [](C &c) { return c.stop(); });
        row("msg::m_next", [](C &c) { return c.next(); });
        row("msg::m_previous", [](C &c) { return c.previous(); });
        row("msg::m_fforward", [](C &c) { return c.forward(); });
        row("msg::m_rewind", [](C &c) { return c.rewind(); });
        row("msg::v_up", [](C &c) { return c.volumeUp(); });
        row("msg::v_down", [](C &c) { return c.volumeDown(); });
        row("msg::v_mute|dat:b:true", [](C &c) { return c.setMute(true); });
        row("msg::v_mute|dat:b:false", [](C &c) { return c.setMute(false); });
        for (const auto &[value, level] : {std::pair(0.5, 50), {0.999, 99}, {1.7, 100}, {-0.2, 0}, {1e300, 100}}) {
            add(qPrintable(QStringLiteral("volume %1").arg(value)),
                Command([volume = value](C &c) { return c.setVolume(volume); }),
                QStringLiteral("msg::v_set|dat::%1").arg(level));
        }
        row(R"(msg::m_command|dat:json:{"command":"repeat"})", [](C &c) { return c.repeat(); });
        row(R"(msg::m_command|dat:json:{"command":"shuffle"})", [](C &c) { return c.shuffle(); });
        const auto modeMessage = [](const char *command, const char *mode) {
            return QStringLiteral("msg::m_command|dat:json:{\"command\":\"%1\", \"value\":\"%2\"}").arg(command, mode);
        };
        const auto repeat = [](RepeatMode::Type mode) { return Command([=](C &c) { return c.repeat(mode); }); };
        add("repeat all", repeat(RepeatMode::All), modeMessage("repeat", "all"));
        add("repeat unsupported", repeat(RepeatMode::Unsupported), modeMessage("repeat", "none"));
        const auto shuffle = [](ShuffleMode::Type mode) { return Command([=](C &c) { return c.shuffle(mode); }); };
        add("shuffle all", shuffle(ShuffleMode::All), modeMessage("shuffle", "all"));
        add("shuffle unsupported", shuffle(ShuffleMode::Unsupported), modeMessage("shuffle", "off"));
    }

    void command_isWrittenAsItStands()
    {
        QFETCH(Command, command);
        QFETCH(QString, message);
        Fixture f;
        QCOMPARE(command(f.controller), MediaError::None);
        QCOMPARE(f.service.next(3), QStringList({"opened", message, "closed"}));
        QCOMPARE(f.log.takeLines(), QStringList());
    }

    void command_fails_withoutService()
    {
        Fixture f;
        f.service.stop();
        QCOMPARE(f.controller.play(), MediaError::Write);
        QCOMPARE(f.controller.setVolume(1), MediaError::Write);
        QCOMPARE(f.controller.repeat(RepeatMode::All), MediaError::Write);
        QCOMPARE(f.log.takeLines(), QStringList());
    }

    void listener_subscribes_andLastOneUnsubscribes()
    {
        const QStringList subscribed{"opened", "msg::md_subscribe|"};
        const QStringList unsubscribed{"msg::md_unsubscribe|", "closed"};
        Fixture f;
        // No listener of a change.
        connect(&f.controller, &QObject::destroyed, this, [] {});
        for (int round = 0; round < 2; ++round) {
            const auto first = connect(&f.controller, &C::trackChanged, [] {});
            QCOMPARE(f.service.next(2), subscribed);
            const auto second = connect(&f.controller, qOverload<const QVariant &>(&C::positionChanged), [] {});
            disconnect(first);
            f.controller.play();
            QCOMPARE(f.service.next(3), QStringList({"opened", "msg::m_play", "closed"}));
            disconnect(second);
            QCoreApplication::processEvents();
            QCOMPARE(f.service.next(2), unsubscribed);
        }
        connect(&f.controller, &C::trackChanged, this, [] {});
        f.service.next(2);
        f.controller.disconnect();
        QCoreApplication::processEvents();
        QCOMPARE(f.service.next(2), unsubscribed);
        QCOMPARE(f.log.takeLines(), QStringList());
    }

    void listener_endsSubscription_whenDestroyed()
    {
        Fixture f;
        auto listener = std::make_unique<QObject>();
        const auto other = std::make_unique<QObject>();
        connect(&f.controller, &C::trackChanged, listener.get(), [] {});
        connect(&f.controller, &C::metaDataChanged, listener.get(), [] {});
        f.service.next(2);
        listener.reset();
        QCoreApplication::processEvents();
        QCOMPARE(f.service.next(2), QStringList({"msg::md_unsubscribe|", "closed"}));
        connect(&f.controller, &C::trackChanged, other.get(), [] {});
        QCOMPARE(f.service.next(2), QStringList({"opened", "msg::md_subscribe|"}));
    }

    void subscription_comesAgain_afterServiceWent()
    {
        SubscribedFixture f;
        f.service.stop();
        QStringList lines;
        QTRY_VERIFY(!(lines += f.log.takeLines()).isEmpty());
        QCOMPARE(lines, QStringList("W NowPlayingControllerPrivate::onReceivedMetaData: cannot read from PPS."));
        connect(&f.controller, &C::trackChanged, this, [] {});
        lines = f.log.takeLines();
        QCOMPARE(lines.size(), 2);
        QVERIFY2(lines.first().startsWith(QLatin1String("W NowPlayingControllerPrivate::registerNotifications: "
                                                        "Error trying to open the PPS connection. error=\"")),
                 qPrintable(lines.first()));
        QCOMPARE(
            lines.last(),
            QStringLiteral("W NowPlayingControllerPrivate::addConnection: Cannot register notification from PPS."));
        ScriptedService next(f.broker, ControlPath);
        connect(&f.controller, &C::trackChanged, this, [] {});
        QCOMPARE(next.next(2), QStringList({"opened", "msg::md_subscribe|"}));
    }

    void messages_data()
    {
        const Rows<QStringList, QStringList, QString> add("messages", "signals", "lines");
        const auto row = [&](const char *name, const QStringList &messages, const QStringList &signalTexts,
                             const char *lines = "") { add(name, messages, signalTexts, lines); };
        const auto update = [](const char *entries) {
            return QStringLiteral("msg::md_update|dat:json:{%1}").arg(QLatin1String(entries));
        };
        const QStringList all{"nextEnabledChanged(true)",
                              "previousEnabledChanged(true)",
                              "durationChanged(4000000000)",
                              "durationChanged(uint 4000000000)",
                              "repeatModeChanged(All)",
                              "shuffleModeChanged(Off)",
                              "positionChanged(5)",
                              "positionChanged(uint 5)",
                              "iconUrlChanged(file:///a.png)",
                              "metaDataChanged(QMap((album, QVariant(QString, B))(artist, QVariant(QString, A))(title, "
                              "QVariant(QString, T))(track, QVariant(QString, 3))))"};
        row("everything", {Update}, all);
        row("the same again", {Update, Update}, all);
        row("position alone", {Update, update(R"("position":6)")},
            all + QStringList{"positionChanged(6)", "positionChanged(uint 6)"});
        row("what a new controller holds",
            {"msg::m_state|dat::stopped",
             update(R"("artist":"","album":"","track":"","nextEnabled":false,"position":0,"albumArtwork":"")")},
            {});
        row("truth values", {update(R"("nextEnabled":"true","prevEnabled":"yes")")}, {"nextEnabledChanged(true)"});
        row("unknown modes", {update(R"("repeat_mode":"one","shuffle_mode":"one")")},
            {"repeatModeChanged(None)", "shuffleModeChanged(Off)"});
        row("states",
            {"msg::m_state|dat::playing", "msg::m_state|dat::playing", "msg::m_state|dat::paused",
             "msg::m_state|dat::stopped"},
            {"mediaStateChanged(Started)", "mediaStateChanged(Paused)", "mediaStateChanged(Stopped)"});
        row("track change", {"msg::m_state|dat::playing", "msg::m_state|dat::trackchange"},
            {"mediaStateChanged(Started)", "trackChanged()"});
        row("process", {"msg::m_active_pid|dat:n:7"}, {});
        row("unknown state", {"msg::m_state|dat::odd"}, {},
            "W NowPlayingControllerPrivate::processPpsRead: error: unknown state.");
        row("no message", {"dat::playing"}, {},
            "W NowPlayingControllerPrivate::processPpsRead: 'msg' is not found in incoming PPS object.'");
        row("error", {"res::md_subscribe|error::no"}, {},
            "W NowPlayingControllerPrivate::processPpsRead: returning error:\"no\"|"
            "W NowPlayingControllerPrivate::processPpsRead: 'msg' is not found in incoming PPS object.'");
    }

    void messages()
    {
        QFETCH(QStringList, messages);
        QFETCH(QString, lines);
        SubscribedFixture f;
        f.receive(messages);
        QTEST(f.trace, "signals");
        QCOMPARE(f.log.takeLines().join(QLatin1Char('|')), lines);
    }

    void controller_mayGo_inEachSlot()
    {
        const QStringList messages{Marker, QStringLiteral("msg::m_state|dat::playing"), Update};
        const int signalCount = 12;
        for (int last = 1; last <= signalCount; ++last) {
            SubscribedFixture f;
            f.emitted.setThen([&] {
                if (f.trace.size() == last) {
                    f.owned.reset();
                }
            });
            for (const QString &message : messages) {
                f.service.send(message);
            }
            QTRY_VERIFY(!f.owned);
            QCOMPARE(f.trace.size(), last);
            QCOMPARE(f.service.next(), QStringLiteral("closed"));
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }

    void olderUpdate_doesNotOverwriteNewer_afterNestedEventLoop()
    {
        SubscribedFixture f;
        bool isNested = false;
        connect(&f.controller, &C::nextEnabledChanged, this, [&] {
            if (!isNested) {
                isNested = true;
                f.receive({QStringLiteral("msg::m_state|dat::playing"),
                           QStringLiteral("msg::md_update|dat:json:{\"track\":\"U\",\"position\":6}")});
            }
        });
        f.service.send(Update);
        QTRY_VERIFY(f.trace.contains(QLatin1String("iconUrlChanged(file:///a.png)")));
        QCOMPARE(f.controller.position(), 6U);
        QCOMPARE(f.controller.metaData(), QVariantMap({{"title", "U"}}));
        // What the newer one does not have comes from the older one.
        QCOMPARE(f.controller.duration(), 4000000000U);
        QCOMPARE(f.trace,
                 QStringList({"nextEnabledChanged(true)", "mediaStateChanged(Started)", "positionChanged(6)",
                              "positionChanged(uint 6)", "metaDataChanged(QMap((title, QVariant(QString, U))))",
                              "previousEnabledChanged(true)", "durationChanged(4000000000)",
                              "durationChanged(uint 4000000000)", "repeatModeChanged(All)", "shuffleModeChanged(Off)",
                              "iconUrlChanged(file:///a.png)"}));
    }

    void getters_giveTheCache_whileSubscribed()
    {
        SubscribedFixture f;
        QCOMPARE(f.controller.mediaState(), MediaState::Stopped);
        QCOMPARE(f.controller.repeatMode(), RepeatMode::Unsupported);
        QCOMPARE(f.controller.shuffleMode(), ShuffleMode::Unsupported);
        QCOMPARE(f.controller.metaData(), QVariantMap({{"artist", ""}, {"album", ""}, {"title", ""}}));
        QVERIFY(!f.controller.isNextEnabled() && !f.controller.isPreviousEnabled() && f.controller.iconUrl().isEmpty());
        f.receive({QStringLiteral("msg::m_state|dat::paused"), Update});
        QCOMPARE(f.controller.mediaState(), MediaState::Paused);
        QCOMPARE(f.controller.metaData(),
                 QVariantMap({{"artist", "A"}, {"album", "B"}, {"title", "T"}, {"track", "3"}}));
        QCOMPARE(f.controller.durationQml(), QVariant(4000000000U));
        QCOMPARE(f.controller.positionQml(), QVariant(5U));
        QCOMPARE(f.controller.iconUrl(), QUrl(QStringLiteral("file:///a.png")));
        f.controller.play();
        QCOMPARE(f.service.next(), QStringLiteral("opened"));
        QCOMPARE(f.service.next(), QStringLiteral("msg::m_play"));
    }

    void getter_asksService_data()
    {
        const Rows<Getter, QStringList, QVariant> row("getter", "answers", "value");
        const QStringList playing{"msg::m_state|dat::playing", Update, "msg::m_active_pid|dat:n:7"};
        const QStringList free{"msg::m_active_pid|dat:n:0"};
        const Getter mediaState = get<&C::mediaState>;
        const Getter repeatMode = get<&C::repeatMode>;
        row("state", mediaState, playing, QVariant::fromValue(MediaState::Started));
        row("metadata", get<&C::metaData>, playing,
            QVariantMap({{"artist", "A"}, {"album", "B"}, {"title", "T"}, {"track", "3"}}));
        row("duration", get<&C::durationQml>, playing, 4000000000U);
        row("position", get<&C::positionQml>, playing, 5U);
        row("next", get<&C::isNextEnabled>, playing, true);
        row("previous", get<&C::isPreviousEnabled>, playing, true);
        row("repeat mode", repeatMode, playing, QVariant::fromValue(RepeatMode::All));
        row("shuffle mode", get<&C::shuffleMode>, playing, QVariant::fromValue(ShuffleMode::Off));
        row("icon", get<&C::iconUrl>, playing, QUrl(QStringLiteral("file:///a.png")));
        row("state, role free", mediaState, free, QVariant::fromValue(MediaState::Unprepared));
        row("metadata, role free", get<&C::metaData>, free, QVariantMap());
        row("repeat mode, error", repeatMode, {"res::md_subscribe|error::no"}, QVariant::fromValue(RepeatMode::None));
        row("position, service goes", get<&C::positionQml>, {"msg::m_state|dat::playing", "gone"}, 0U);
    }

    void getter_asksService()
    {
        QFETCH(Getter, getter);
        QFETCH(QStringList, answers);
        Fixture f;
        f.service.answer(QStringLiteral("md_subscribe"), answers);
        // Whatever was read before: nothing is kept.
        for (int round = 0; round < 2; ++round) {
            QTEST(getter(f.controller), "value");
            QCOMPARE(f.service.next(2), QStringList({"opened", "msg::md_subscribe|"}));
            if (answers.contains(QLatin1String("gone"))) {
                break;
            }
            QCOMPARE(f.service.next(2), QStringList({"msg::md_unsubscribe|", "closed"}));
        }
    }

    void getter_asksService_rightAfterLastListenerLeft()
    {
        Fixture f;
        const auto listener = connect(&f.controller, &C::trackChanged, [] {});
        disconnect(listener);
        f.service.answer(QStringLiteral("md_subscribe"), {QStringLiteral("msg::m_state|dat::playing")});
        QCOMPARE(f.controller.mediaState(), MediaState::Started);
        QCOMPARE(f.service.next(4).mid(2), QStringList({"msg::md_unsubscribe|", "closed"}));
    }

    void getter_readsOn_untilFieldComes()
    {
        Fixture f;
        f.service.answer(QStringLiteral("md_subscribe"),
                         {"msg::m_active_pid|dat:n:7", "msg::other", R"(msg::md_update|dat:json:{"duration":1})",
                          "msg::m_state|dat::playing", R"(msg::md_update|dat:json:{"position":2})", "gone"});
        QCOMPARE(f.controller.position(), 2U);
    }
};

QTEST_GUILESS_MAIN(NowPlayingControllerTest)
#include "tst_nowplayingcontroller.moc"
