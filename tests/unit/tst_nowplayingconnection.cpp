#include "NowPlayingConnectionFixture.h"
#include "private/NowPlayingConnectionPrivate.h"

#include <multimedia/NowPlayingConnection.h>

#include <QtTest/QtTest>

#include <Files.h>
#include <Rows.h>

using namespace voro::multimedia;
using namespace nowplaying;

namespace {

/** The metadata that is published, as the JSON of an otherwise new connection with these entries changed or added. */
QString metaDataMessage(const QVariantMap &entries)
{
    QVariantMap data{{"duration", 0}, {"nextEnabled", true}, {"position", 0}, {"prevEnabled", true}};
    data.insert(entries);
    QString text = QString::fromUtf8(QJsonDocument(QJsonObject::fromVariantMap(data)).toJson(QJsonDocument::Compact));
    return QLatin1String("dat:json:") + text + QLatin1String("|msg::metadata|");
}

} // namespace

class NowPlayingConnectionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void newConnection_hasItsValues()
    {
        const C connection;
        const C other;
        QVERIFY(connection.connectionName().startsWith(QLatin1String("NPC:")));
        QVERIFY(connection.connectionName() != other.connectionName());
        QVERIFY(!connection.isAcquired() && !connection.isControllerActive() && !connection.isPreempted());
        QVERIFY(connection.isNextEnabled() && connection.isPreviousEnabled() && connection.isPreemptable());
        QCOMPARE(connection.mediaState(), MediaState::Stopped);
        QCOMPARE(connection.repeatMode(), RepeatMode::Unsupported);
        QCOMPARE(connection.shuffleMode(), ShuffleMode::Unsupported);
        QCOMPARE(connection.priorityLevel(), PriorityLevel::Low);
        for (const char *name : {"audioManagerHandle", "duration", "lastRevokingConnectionPid", "position"}) {
            QCOMPARE(connection.property(name), QVariant(0U));
        }
    }

    void acquire_data()
    {
        const Rows<QStringList, MediaError::Type, QStringList, QString> row("answers", "error", "signals", "lines");
        const QString prefix = QStringLiteral("W NowPlayingConnectionPrivate::");
        const auto lines = [&](const char *first, const char *error) {
            QString text = prefix + QLatin1String("acquire: Error trying to acquire the service. error=") + error;
            return *first ? prefix + QLatin1String("handleAcquireResult: ") + first + QLatin1Char('|') + text : text;
        };
        row("granted", {"res::acquire"}, MediaError::None, {"acquired()"}, {});
        row("id is not compared", {"res::acquire|id::other"}, MediaError::None, {"acquired()"}, {});
        row("refused", {"res::acquire|err::revoked"}, MediaError::ResourceUnavailable, {},
            lines("Service is unavailable", "ResourceUnavailable"));
        row("unknown error", {"res::acquire|err:n:7"}, MediaError::Internal, {},
            lines("Unknown acquire error. err=\"7\"", "Internal"));
        row("other answer", {"res::register"}, MediaError::InvalidParameter, {}, lines("", "InvalidParameter"));
        row("commands before the answer",
            {"msg::track|dat::play", "msg::track|dat::sendData", "msg::revoke", "res::acquire"}, MediaError::None,
            {"play()", "controllerActiveChanged(true)", "acquired()"}, {});
        row("service goes", {"msg::track|dat::play", "gone"}, MediaError::Internal, {"play()"},
            prefix + "acquire: Unable to send acquire message.");
    }

    void acquire()
    {
        QFETCH(QStringList, answers);
        QFETCH(MediaError::Type, error);
        QFETCH(QString, lines);
        Fixture f;
        f.service.answer(QStringLiteral("msg::acquire"), answers);
        QCOMPARE(f.connection.acquire(), error);
        QTEST(f.trace, "signals");
        QCOMPARE(f.log.takeLines().join(QLatin1Char('|')), lines);
        QCOMPARE(f.connection.isAcquired(), error == MediaError::None);
    }

    void acquire_registersAndSaysItsState()
    {
        Fixture f;
        f.connection.setMediaState(MediaState::Started);
        QCOMPARE(f.connection.acquire(), MediaError::None);
        QCOMPARE(f.written(), (QStringList{"opened",
                                           "dat:json:{\"audio\":\"general\",\"name\":\"player\",\"overlay\":\"plain\","
                                           "\"prio\":\"low\"}|msg::register|",
                                           "id::player|msg::acquire|", "dat::playing|msg::state|"}));
    }

    void acquire_isRefused_whileAcquired()
    {
        Fixture f;
        f.acquire();
        QCOMPARE(f.connection.acquire(), MediaError::InvalidState);
        QCOMPARE(f.written(), QStringList());
    }

    void acquire_fails_withoutService()
    {
        Fixture f;
        f.service.stop();
        QCOMPARE(f.connection.acquire(), MediaError::Internal);
        const QString line = f.log.takeLines().value(0);
        QVERIFY2(
            line.startsWith(QLatin1String("W NowPlayingConnectionPrivate::acquire: Unable to open PPS object. errno=")),
            qPrintable(line));
        QVERIFY(f.trace.isEmpty());
    }

    void acquire_worksAgain_afterServiceWent()
    {
        Fixture f;
        f.service.answer(QStringLiteral("msg::acquire"), {QStringLiteral("gone")});
        QCOMPARE(f.connection.acquire(), MediaError::Internal);
        ScriptedService next(f.broker, ControlPath);
        next.answer(QStringLiteral("msg::acquire"), {QStringLiteral("res::acquire")});
        QCOMPARE(f.connection.acquire(), MediaError::None);
    }

    void acquireResult_isNone_withoutControlMessage()
    {
        C connection;
        NowPlayingConnectionPrivate parts(&connection);
        QCOMPARE(parts.handleAcquireResult({}), MediaError::InvalidParameter);
        QCOMPARE(parts.handleAcquireResult({{"@control", QVariantMap{{"msg", "acquire"}}}}),
                 MediaError::InvalidParameter);
        bool ok = true;
        QCOMPARE(parts.sendReceive(nullptr, {}, ok), QVariantMap());
        QVERIFY(!ok);
    }

    void revoke_closesAndTells_onlyWhenAcquired()
    {
        Fixture f;
        QCOMPARE(f.connection.revoke(), MediaError::None);
        QVERIFY(f.trace.isEmpty());
        f.acquire();
        QCOMPARE(f.connection.revoke(), MediaError::None);
        QCOMPARE(f.service.next(), QStringLiteral("closed"));
        QCOMPARE(f.trace, QStringList("revoked()"));
        QVERIFY(!f.connection.isAcquired());
        f.acquire();
        QVERIFY(f.connection.isAcquired());
    }

    void preempted_isWhatStatusSays_data()
    {
        const Rows<QString, bool> row("status", "preempted");
        row("no status", {}, false);
        row("nobody named", "status active_pid:n:1", false);
        row("itself", "status active_name::player", false);
        row("another", "status active_name::other", true);
        row("free", "status active_name::", true);
    }

    void preempted_isWhatStatusSays()
    {
        QFETCH(QString, status);
        Fixture f;
        if (!status.isEmpty()) {
            f.broker.publish(QStringLiteral("/pps/services/multimedia/mediaplayer"), status);
        }
        QVERIFY(!f.connection.isPreempted());
        f.acquire();
        QTEST(f.connection.isPreempted(), "preempted");
    }

    void message_data()
    {
        const Rows<QString, QString> add("signals", "lines");
        const auto row = [&](const char *message, const char *signalText, const char *lines = "") {
            add(message, signalText, lines);
        };
        row("msg::track|dat::next", "next()");
        row("msg::track|dat::prev", "previous()");
        row("msg::track|dat::play", "play()");
        row("msg::track|dat::pause", "pause()");
        row("msg::track|dat::stop", "stop()");
        row("msg::track|dat::forward", "forward()");
        row("msg::track|dat::rewind", "rewind()");
        row("msg::track", "");
        row("msg::other|dat::play", "");
        row("msg::track|dat::sendData", "controllerActiveChanged(true)");
        row("msg::track|dat::holdData", "");
        row(R"(msg::track|dat:json:{"command":"repeat"})", "repeat()");
        row(R"(msg::track|dat:json:{"command":"repeat","value":"none"})", "repeatRequest(None)");
        row(R"(msg::track|dat:json:{"command":"repeat","value":"track"})", "repeatRequest(Track)");
        row(R"(msg::track|dat:json:{"command":"repeat","value":"all"})", "repeatRequest(All)");
        row(R"(msg::track|dat:json:{"command":"repeat","value":"one"})", "",
            "W NowPlayingConnectionPrivate::toRepeatMode: Unknown repeat mode string '\"one\"'|"
            "W NowPlayingConnectionPrivate::handleControlMessage: Ignored unknown repeat command. value=\"one\"");
        row(R"(msg::track|dat:json:{"command":"shuffle"})", "shuffle()");
        row(R"(msg::track|dat:json:{"command":"shuffle","value":"off"})", "shuffleRequest(Off)");
        row(R"(msg::track|dat:json:{"command":"shuffle","value":"all"})", "shuffleRequest(All)");
        row(R"(msg::track|dat:json:{"command":"shuffle","value":"none"})", "",
            "W NowPlayingConnectionPrivate::toShuffleMode: Unknown shuffle mode string '\"none\"'|"
            "W NowPlayingConnectionPrivate::handleControlMessage: Ignored unknown repeat command. value=\"none\"");
        row(R"(msg::track|dat:json:{"command":"next"})", "");
    }

    void message()
    {
        QFETCH(QString, lines);
        Fixture f;
        f.acquire();
        // Commands are passed on also when the role is lost.
        for (const char *given : {"msg::track|dat::holdData", "msg::revoke"}) {
            f.receive(QString::fromLatin1(given));
            f.trace.clear();
            f.receive(QString::fromLatin1(QTest::currentDataTag()));
            QTEST(f.trace.join(QLatin1Char('|')), "signals");
            QCOMPARE(f.log.takeLines().join(QLatin1Char('|')), lines);
            f.receive(QStringLiteral("msg::track|dat::holdData"));
        }
        QVERIFY(!f.connection.isAcquired());
    }

    void revokeMessage_tellsWho_onlyWhenAcquired()
    {
        Fixture f;
        f.acquire();
        f.receive(QStringLiteral(R"(msg::revoke|dat:json:{"name":"other","pid":4000000000})"));
        QCOMPARE(f.trace, QStringList("revoked()"));
        QVERIFY(!f.connection.isAcquired());
        QCOMPARE(f.connection.lastRevokingConnectionName(), QStringLiteral("other"));
        QCOMPARE(f.connection.lastRevokingConnectionPidQml(), QVariant(4000000000U));
        f.receive(QStringLiteral("msg::revoke"));
        QCOMPARE(f.trace, QStringList("revoked()"));
        QCOMPARE(f.connection.lastRevokingConnectionName(), QStringLiteral("other"));

        // The object stays open: what is written goes on in it.
        QCOMPARE(f.connection.acquire(), MediaError::None);
        QCOMPARE(f.service.next(3).last(), QStringLiteral("dat::stopped|msg::state|"));
        f.receive(QStringLiteral("msg::revoke"));
        QCOMPARE(f.connection.lastRevokingConnectionName(), QString());
        QCOMPARE(f.connection.lastRevokingConnectionPid(), 0U);
    }

    void setter_data()
    {
        const Rows<Action, QString, QStringList, QString> add("act", "signals", "messages", "lines");
        const auto row = [&](const char *name, const Action &act, const char *signalText, const QStringList &messages,
                             const char *lines = "") { add(name, act, signalText, messages, lines); };
        const QVariantMap metaData{{"title", "A"}};
        row("metadata", call(&C::setMetaData, metaData), "metaDataChanged(QMap((title, QVariant(QString, A))))",
            {metaDataMessage({{"title", "A"}, {"track", "A"}})});
        row("icon", call(&C::setIconUrl, QUrl(QStringLiteral("http://host/a"))), "iconUrlChanged(http://host/a)", {});
        row("duration", call(&C::setDuration, 7), "durationChanged(7)|durationChanged(uint 7)",
            {metaDataMessage({{"duration", 7}})});
        row("position", call(&C::setPosition, 0), "positionChanged(0)|positionChanged(uint 0)", {metaDataMessage({})});
        row("two in a row",
            [](Fixture &f) {
                f.connection.setPosition(1);
                f.connection.setDuration(2);
            },
            "positionChanged(1)|positionChanged(uint 1)|durationChanged(2)|durationChanged(uint 2)",
            {metaDataMessage({{"duration", 2}, {"position", 1}}), metaDataMessage({{"duration", 2}, {"position", 1}})});
        row("next", call(&C::setNextEnabled, false), "nextEnabledChanged(false)", {});
        row("previous", call(&C::setPreviousEnabled, false), "previousEnabledChanged(false)", {});
        row("repeat mode", call(&C::setRepeatMode, RepeatMode::Track), "repeatModeChanged(Track)",
            {metaDataMessage({{"repeat_mode", "track"}})});
        row("shuffle mode", call(&C::setShuffleMode, ShuffleMode::All), "shuffleModeChanged(All)",
            {metaDataMessage({{"shuffle_mode", "all"}})});
        row("paused", call(&C::setMediaState, MediaState::Paused), "mediaStateChanged(Paused)",
            {"dat::paused|msg::state|"});
        row("prepared", call(&C::setMediaState, MediaState::Prepared), "mediaStateChanged(Prepared)",
            {"dat::stopped|msg::state|"});
        row("same state", call(&C::setMediaState, MediaState::Stopped), "mediaStateChanged(Stopped)",
            {"dat::stopped|msg::state|"});
        row("track change", [](Fixture &f) { QCOMPARE(f.connection.trackChange(), MediaError::None); }, "",
            {"dat::trackchange|msg::state|"});
        row("overlay", call(&C::setOverlayStyle, OverlayStyle::Fancy), "overlayStyleChanged(Fancy)",
            {R"(dat:json:{"audio":"general","name":"player","overlay":"fancy","prio":"low"}|msg::register|)"});
        row("same overlay", call(&C::setOverlayStyle, OverlayStyle::Plain), "", {});
        row("handle", call(&C::setAudioManagerHandleQml, 4000000000U),
            "audioManagerHandleChanged(4000000000)|audioManagerHandleChanged(uint 4000000000)",
            {R"(dat:json:{"audio":"general","audioman_handle":4000000000,"name":"player","overlay":"plain","prio":"low"}|)"
             "msg::register|"});
        row(
            "variants that are none",
            [](Fixture &f) {
                for (const char *name : {"position", "duration", "audioManagerHandle"}) {
                    f.connection.setProperty(name, QStringLiteral("abc"));
                }
            },
            "", {},
            "W NowPlayingConnection::setPositionQml: Unable to convert variant position. position=\"abc\"|"
            "W NowPlayingConnection::setDurationQml: Unable to convert variant duration. duration=\"abc\"|"
            "W NowPlayingConnection::setAudioManagerHandleQml: Unable to convert variant handle.");
        row("preemptable, too late", call(&C::setPreemptable, false), "", {},
            "W NowPlayingConnection::setPreemptable: Attempting to set preemptable after creation.");
        row(
            "metadata that no message can hold",
            [](Fixture &f) {
                f.connection.setMetaData({{"uri", QUrl(QStringLiteral("a:b"))}});
                f.trace.clear();
            },
            "", {}, "W NowPlayingConnectionPrivate::send: Error encoding message for PPS. errno=0");
        row(
            "metadata that is too long",
            [](Fixture &f) {
                f.connection.setMetaData({{"title", QString(70000, QLatin1Char('a'))}});
                f.trace.clear();
            },
            "", {}, "W NowPlayingConnectionPrivate::send: Error writing message to PPS. errno=90");
    }

    void setter()
    {
        QFETCH(Action, act);
        QFETCH(QString, lines);
        Fixture f;
        f.acquireForWatcher();
        act(f);
        QTEST(f.trace.join(QLatin1Char('|')), "signals");
        f.receive(QStringLiteral("msg::track|dat::holdData"));
        QCOMPARE(f.log.takeLines().join(QLatin1Char('|')), lines);
        QTEST(f.written(), "messages");
    }

    void metaData_data()
    {
        const Rows<Action, QString> add("given", "message");
        const auto row = [&](const char *name, const Action &given, const QVariantMap &entries) {
            add(name, given, metaDataMessage(entries));
        };
        const auto withMetaData = [](const QVariantMap &metaData) { return call(&C::setMetaData, metaData); };
        row("title and number", withMetaData({{"title", "A"}, {"track", 3}}),
            {{"title", "A"}, {"track", "A"}, {"track_number", "3"}});
        row("number alone", withMetaData({{"track", 3}}), {{"track", 3}, {"track_number", "3"}});
        row("unsupported modes", withMetaData({{"repeat_mode", "all"}, {"shuffle_mode", "all"}}), {});
        row("a duration of its own", withMetaData({{"duration", 5}, {"nextEnabled", 5}}), {});
        row("modes and keys",
            [](Fixture &f) {
                f.connection.setRepeatMode(RepeatMode::None);
                f.connection.setShuffleMode(ShuffleMode::Off);
                f.connection.setNextEnabled(false);
                f.connection.setPreviousEnabled(false);
            },
            {{"nextEnabled", false}, {"prevEnabled", false}, {"repeat_mode", "none"}, {"shuffle_mode", "off"}});
        const QString here = QCoreApplication::applicationFilePath();
        row("icon", call(&C::setIconUrl, QUrl::fromLocalFile(here)),
            {{"albumArtwork", QString(QLatin1String("file://") + here)}});
        QUrl icon = QUrl::fromLocalFile(writeFile(m_folder.filePath(QStringLiteral("ä b%20.png")), {}));
        const QString artwork = QString::fromLatin1(icon.toEncoded());
        row("icon with a blank, an umlaut and a percent sign", call(&C::setIconUrl, icon), {{"albumArtwork", artwork}});
        icon.setScheme({});
        row("the same without a scheme", call(&C::setIconUrl, icon), {{"albumArtwork", artwork}});
        row("missing icon", call(&C::setIconUrl, QUrl(QStringLiteral("file:///no/such/file"))),
            {{"albumArtwork", "file:///no/such/file"}});
        row("icon in the net", call(&C::setIconUrl, QUrl(QStringLiteral("http://host/a.png"))), {});
    }

    void metaData()
    {
        QFETCH(Action, given);
        Fixture f;
        given(f);
        f.acquire();
        f.receive(QStringLiteral("msg::track|dat::sendData"));
        QTEST(f.service.next(), "message");
    }

    void metaData_isPublished_onlyForWatcher()
    {
        Fixture f;
        const auto update = [&f] {
            f.connection.setPosition(1);
            QCoreApplication::processEvents();
        };
        const QString message = metaDataMessage({{"position", 1}});
        update();
        f.acquire();
        update();
        f.receive(QStringLiteral("msg::track|dat::sendData"));
        f.receive(QStringLiteral("msg::track|dat::sendData"));
        QCOMPARE(f.trace.filter(QStringLiteral("controllerActive")), QStringList("controllerActiveChanged(true)"));
        update();
        f.receive(QStringLiteral("msg::track|dat::holdData"));
        update();
        f.receive(QStringLiteral("msg::track|dat::sendData"));
        f.receive(QStringLiteral("msg::revoke"));
        update();
        f.connection.acquire();
        QCOMPARE(f.written().filter(QStringLiteral("metadata")), QStringList(4, message));
    }

    void state_isPublished_onlyWhenAcquired()
    {
        Fixture f;
        QCOMPARE(f.connection.trackChange(), MediaError::InvalidState);
        f.acquire();
        f.receive(QStringLiteral("msg::revoke"));
        f.connection.setMediaState(MediaState::Started);
        QCOMPARE(f.connection.trackChange(), MediaError::InvalidState);
        f.connection.acquire();
        QCOMPARE(f.service.next(3).last(), QStringLiteral("dat::playing|msg::state|"));
        f.service.stop();
        QTRY_COMPARE(f.connection.trackChange(), MediaError::Internal);
    }

    void connection_mayGo_inEachSlot_data()
    {
        const Rows<Action, Action, int> row("given", "act", "signalCount");
        const Action nothing = [](Fixture &) {};
        const Action acquire = call(&C::acquire);
        const Action acquired = [](Fixture &f) { f.acquire(); };
        const auto message = [](const char *text) -> Action {
            return [text = QString::fromLatin1(text)](Fixture &f) {
                f.service.send(text);
                QTRY_VERIFY(!f.trace.isEmpty());
            };
        };
        row("acquire", nothing, acquire, 1);
        row(
            "acquire, with messages before the answer",
            [](Fixture &f) {
                f.service.answer(QStringLiteral("msg::acquire"),
                                 {"msg::track|dat::play", "msg::track|dat::sendData",
                                  R"(msg::track|dat:json:{"command":"repeat"})", "res::acquire"});
            },
            acquire, 4);
        row("revoke", acquired, call(&C::revoke), 1);
        row("position", acquired, call(&C::setPosition, 7), 2);
        row("icon", acquired, call(&C::setIconUrl, QUrl(QStringLiteral("file:///a.png"))), 1);
        row("command", acquired, message("msg::track|dat::next"), 1);
        row("role taken away", acquired, message("msg::revoke|dat:json:{}"), 1);
    }

    void connection_mayGo_inEachSlot()
    {
        QFETCH(Action, given);
        QFETCH(Action, act);
        QFETCH(int, signalCount);
        for (int last = 1; last <= signalCount; ++last) {
            Fixture f;
            given(f);
            f.emitted.setThen([&] {
                if (f.trace.size() == last) {
                    f.owned.reset();
                }
            });
            act(f);
            QCOMPARE(f.trace.size(), last);
            QVERIFY(!f.owned);
            QString event;
            while (event != QLatin1String("closed") && event != QLatin1String("nothing")) {
                event = f.service.next();
            }
            QCOMPARE(event, QStringLiteral("closed"));
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }

private:
    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(NowPlayingConnectionTest)
#include "tst_nowplayingconnection.moc"
