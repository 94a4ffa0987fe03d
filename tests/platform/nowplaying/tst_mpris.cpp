#include "MprisTest.h"

#include <Rows.h>
#include <services/nowplaying/desktop/DesktopEntry.h>

using namespace mpris;

/** An application as a desktop commands it; it says what it is told to do. */
class DesktopApplication : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
public:
    DesktopApplication()
    {
        QDBusConnection::sessionBus().registerObject("/org/example/Player", this, QDBusConnection::ExportAllSlots);
        QDBusConnection::sessionBus().registerService("org.example.Player");
    }

public Q_SLOTS:
    void Activate(const QVariantMap &) { say("Activate\n"); }
    void ActivateAction(const QString &action, const QVariantList &, const QVariantMap &) { say(action + '\n'); }

private:
    static void say(const QString &text)
    {
        QFile output;
        static_cast<void>(output.open(stdout, QFile::WriteOnly) && output.write(text.toUtf8()) > 0);
    }
};

/** What the player on the bus says and does. */
class TestMpris : public MprisTest {
    Q_OBJECT
private Q_SLOTS:
    void object_saysWhatItIs()
    {
        appear();
        auto known = qdbus_cast<QVariantMap>(call(Properties, "GetAll", {Root}).arguments().value(0));
        // Where this test runs may have one.
        const bool hasDesktopEntry = known.remove("DesktopEntry") > 0;
        QCOMPARE(known, (QVariantMap{{"CanQuit", false},
                                     {"CanRaise", false},
                                     {"HasTrackList", false},
                                     {"Identity", "a"},
                                     {"SupportedUriSchemes", QStringList()},
                                     {"SupportedMimeTypes", QStringList()}}));
        const QString xml = call("org.freedesktop.DBus.Introspectable", "Introspect").arguments().value(0).toString();
        QXmlStreamReader reader(xml);
        QMap<QString, QString> types;
        while (!reader.atEnd()) {
            if (reader.readNextStartElement() && reader.name() == QStringLiteral("property")) {
                types[reader.attributes().value("name").toString()] = reader.attributes().value("type").toString();
            }
        }
        QVERIFY(!reader.hasError() || reader.error() == QXmlStreamReader::PrematureEndOfDocumentError);
        const auto player = qdbus_cast<QVariantMap>(call(Properties, "GetAll", {PlayerInterface}).arguments().value(0));
        for (auto value = player.cbegin(); value != player.cend(); ++value) {
            const QByteArray type = value.key() == "Metadata"
                                        ? value->value<QDBusArgument>().currentSignature().toLatin1()
                                        : QByteArray(QDBusMetaType::typeToSignature(value->metaType()));
            QCOMPARE(value.key() + ' ' + type, value.key() + ' ' + types.take(value.key()));
        }
        QCOMPARE(types.remove("DesktopEntry") > 0, hasDesktopEntry);
        QCOMPARE(types.keys(), known.keys());
    }

    void application_isNamedRaisedAndEnded_asItsDesktopFileSays()
    {
        appear();
        Witness witness(test);
        QProcess starter;
        starter.start("/bin/sh", {"-c",
                                  "GIO_LAUNCHED_DESKTOP_FILE=/a/org.example.Player.desktop "
                                  "GIO_LAUNCHED_DESKTOP_FILE_PID=$$ exec \"$0\" hold",
                                  QCoreApplication::applicationFilePath()});
        QTRY_COMPARE(witness.changes.value("DesktopEntry"), "org.example.Player");
        // It has that name on the bus, so it can be raised and ended.
        QTRY_COMPARE(witness.changes.value("CanRaise"), true);
        auto known = qdbus_cast<QVariantMap>(call(Properties, "GetAll", {Root}).arguments().value(0));
        QCOMPARE(known["DesktopEntry"], "org.example.Player");
        QCOMPARE(known["CanRaise"], true);
        for (const auto &[command, told] : {std::pair("Raise", "Activate\n"), {"Quit", "quit\n"}}) {
            QCOMPARE(call(Root, command).type(), QDBusMessage::ReplyMessage);
            QVERIFY(starter.waitForReadyRead(20'000));
            QCOMPARE(starter.readAllStandardOutput(), told);
        }
        starter.kill();
        QVERIFY(starter.waitForFinished());
    }

    void desktopEntry_isReadFromTheUnit_data()
    {
        const Rows<QByteArray, QString> row("unit", "entry");
        row("scope", "app-gnome-org.gnome.Music-4711.scope", "org.gnome.Music");
        row("scope without a launcher", "app-org.kde.elisa-4711.scope", "org.kde.elisa");
        row("service", "app-gnome-vlc@autostart.service", "vlc");
        row("service without more", "app-vlc.service", "vlc");
        row("group within", "app-org.kde.elisa@1f2e.service/sub", "org.kde.elisa");
        row("dashes", R"(app-flatpak-my\x2dnew\x2dplayer-12.scope)", "my-new-player");
        row("other unit", "session-2.scope", "");
        row("bad characters", R"(app-a\x2fb-1.scope)", "");
    }

    void desktopEntry_isReadFromTheUnit()
    {
        QFETCH(const QByteArray, unit);
        const QByteArray groups = "0::/user.slice/user-1000.slice/user@1000.service/app.slice/" + unit + '\n';
        QTEST(voro::nowplaying::desktopEntryFromGroups(groups), "entry");
    }

    void properties_areAsTheHolderTells()
    {
        appear();
        QVERIFY(
            property("Metadata").toMap().value("mpris:trackid").value<QDBusObjectPath>().path().endsWith("/NoTrack"));
        tell("msg::state|dat::paused");
        tell(
            R"(msg::metadata|dat:json:{"artist":"A","album":"B","track":"C","track_number":"7","duration":9000,"position":4000,)"
            R"("nextEnabled":true,"prevEnabled":true,"repeat_mode":"all","shuffle_mode":"all"})");
        QVariantMap metadata = property("Metadata").toMap();
        const QString trackId = metadata.take("mpris:trackid").value<QDBusObjectPath>().path();
        QVERIFY(!trackId.endsWith("/NoTrack"));
        QCOMPARE(metadata, (QVariantMap{{"xesam:artist", QStringList("A")},
                                        {"xesam:album", "B"},
                                        {"xesam:title", "C"},
                                        {"xesam:trackNumber", 7},
                                        {"mpris:length", static_cast<qint64>(9'000'000)}}));
        auto all = qdbus_cast<QVariantMap>(call(Properties, "GetAll", {PlayerInterface}).arguments().value(0));
        all.remove("Metadata");
        QCOMPARE(all, (QVariantMap{{"PlaybackStatus", "Paused"},
                                   {"LoopStatus", "Playlist"},
                                   {"Rate", 1.0},
                                   {"Shuffle", true},
                                   {"Volume", 1.0},
                                   {"Position", static_cast<qint64>(4'000'000)},
                                   {"MinimumRate", 1.0},
                                   {"MaximumRate", 1.0},
                                   {"CanGoNext", true},
                                   {"CanGoPrevious", true},
                                   {"CanPlay", true},
                                   {"CanPause", true},
                                   {"CanSeek", false},
                                   {"CanControl", true}}));
    }

    void modes_areOffered_whileTheHolderGivesThem()
    {
        appear();
        const QStringList modes{"LoopStatus", "Shuffle"};
        const auto offered = [this] {
            const auto all =
                qdbus_cast<QVariantMap>(call(Properties, "GetAll", {PlayerInterface}).arguments().value(0));
            return QStringList(all.keys()).filter(QRegularExpression("^(LoopStatus|Shuffle)$"));
        };
        tell(R"(msg::metadata|dat:json:{"track":"T"})");
        QCOMPARE(offered(), QStringList());
        const QDBusMessage reply =
            call(Properties, "Set", {PlayerInterface, "Shuffle", QVariant::fromValue(QDBusVariant(true))});
        QCOMPARE(reply.errorName(), "org.freedesktop.DBus.Error.UnknownProperty");
        QCOMPARE(holder->rest(), QByteArrayList());
        Witness witness(test);
        tell(R"(msg::metadata|dat:json:{"track":"T","repeat_mode":"none","shuffle_mode":"off"})");
        QCOMPARE(witness.changes, (QVariantMap{{"LoopStatus", "None"}, {"Shuffle", false}}));
        QCOMPARE(offered(), modes);
        tell(R"(msg::metadata|dat:json:{"track":"T"})");
        QCOMPARE(witness.gone, modes);
        QCOMPARE(offered(), QStringList());
    }

    void propertiesChanged_tellsWhatChanged_data()
    {
        const Rows<QByteArray, QStringList> row("lines", "changed");
        row("state", "msg::state|dat::playing", {"PlaybackStatus"});
        row("the same state", "msg::state|dat::paused", {});
        row("track change", "msg::state|dat::trackchange", {"Metadata"});
        row("position only", R"(msg::metadata|dat:json:{"track":"T","position":900})", {});
        row("title", R"(msg::metadata|dat:json:{"track":"U"})", {"Metadata"});
        row("duration", R"(msg::metadata|dat:json:{"track":"T","duration":1})", {"Metadata"});
        row("modes and buttons",
            R"(msg::metadata|dat:json:{"track":"T","repeat_mode":"track","shuffle_mode":"all","nextEnabled":true,"prevEnabled":true})",
            {"CanGoNext", "CanGoPrevious", "LoopStatus", "Shuffle"});
    }

    void propertiesChanged_tellsWhatChanged()
    {
        QFETCH(const QByteArray, lines);
        QFETCH(const QStringList, changed);
        appear();
        tell("msg::state|dat::paused");
        tell(R"(msg::metadata|dat:json:{"track":"T"})");
        const QVariant trackId = property("Metadata").toMap().value("mpris:trackid");
        Witness witness(test);
        tell(lines);
        QCOMPARE(witness.changes.keys(), changed);
        const bool isOtherTrack = property("Metadata").toMap().value("mpris:trackid") != trackId;
        QCOMPARE(isOtherTrack, lines.contains("trackchange") || lines.contains("\"U\""));
    }

    void artwork_isALocalUrl_data()
    {
        const Rows<QByteArray, QString> row("artwork", "url");
        row("path", "/a b%.png", "file:///a%20b%25.png");
        row("url with blanks", "file:///a bü%25.png", "file:///a%20b%C3%BC%25.png");
        row("data", "data:image/png;base64,AAAA", "data:image/png;base64,AAAA");
        row("net", "http://example.org/a.png", "");
        row("file of another machine", "file://example.org/a.png", "");
    }

    void artwork_isALocalUrl()
    {
        QFETCH(const QByteArray, artwork);
        appear();
        tell("msg::metadata|dat:json:{\"albumArtwork\":\"" + artwork + "\"}");
        QTEST(property("Metadata").toMap().value("mpris:artUrl").toString(), "url");
    }

    void position_runsOn_andJumpsAreTold()
    {
        appear();
        Witness witness(test);
        tell(R"(msg::metadata|dat:json:{"position":60000,"duration":61000})");
        QCOMPARE(witness.jumps, QList<qlonglong>{60'000'000});
        QCOMPARE(property("Position"), QVariant(static_cast<qint64>(60'000'000)));
        tell("msg::state|dat::playing");
        QTRY_VERIFY(property("Position").toLongLong() > 60'100'000);
        tell(R"(msg::metadata|dat:json:{"position":60300,"duration":61000})");
        QCOMPARE(witness.jumps.size(), 1);
        QTRY_COMPARE(property("Position"), QVariant(static_cast<qint64>(61'000'000)));
        tell("msg::state|dat::paused");
        tell(R"(msg::metadata|dat:json:{"position":1000,"duration":61000})");
        QCOMPARE(property("Position"), QVariant(static_cast<qint64>(1'000'000)));
        QCOMPARE(witness.jumps, (QList<qlonglong>{60'000'000, 1'000'000}));
    }

    void calls_commandTheHolder_data()
    {
        const Rows<QString, QString, QVariantList, QByteArrayList> add("interface", "method", "arguments", "commands");
        const auto row = [&](const char *method, const QVariantList &arguments, const QByteArrayList &commands) {
            add(method, PlayerInterface, method, arguments, commands);
        };
        row("Play", {}, {track(R"("play")")});
        row("Pause", {}, {track(R"("pause")")});
        row("PlayPause", {}, {track(R"("pause")")});
        row("Stop", {}, {track(R"("stop")")});
        row("Next", {}, {track(R"("next")")});
        row("Previous", {}, {});
        row("Seek", {static_cast<qint64>(1000)}, {});
        row("SetPosition", {QVariant::fromValue(QDBusObjectPath("/a")), static_cast<qint64>(1000)}, {});
        add("Raise", Root, "Raise", {}, {});
        add("Quit", Root, "Quit", {}, {});
        add("no interface", "", "Play", {}, {track(R"("play")")});
        const auto set = [](const char *name, const QVariant &value, const QByteArrayList &commands) {
            const QVariantList arguments{PlayerInterface, name, QVariant::fromValue(QDBusVariant(value))};
            QTest::addRow("%s %s", name, value.toByteArray().constData())
                << Properties << QString("Set") << arguments << commands;
        };
        set("LoopStatus", "Playlist", {track(R"({"command":"repeat","value":"all"})")});
        set("Shuffle", true, {track(R"({"command":"shuffle","value":"all"})")});
        set("Shuffle", false, {track(R"({"command":"shuffle","value":"off"})")});
        set("Rate", 2.0, {});
        set("Rate", 0.0, {track(R"("pause")")});
    }

    void calls_commandTheHolder()
    {
        QFETCH(const QString, interface);
        QFETCH(const QString, method);
        QFETCH(const QVariantList, arguments);
        appear();
        tell("msg::state|dat::playing");
        tell(R"(msg::metadata|dat:json:{"nextEnabled":true,"repeat_mode":"none","shuffle_mode":"off"})");
        const QDBusMessage reply = call(interface, method, arguments);
        QCOMPARE(reply.errorMessage(), QString());
        QTEST(holder->rest(), "commands");
    }

    void calls_thatAreWrong_getAnError_data()
    {
        const Rows<QString, QString, QVariantList, QString> add("interface", "method", "arguments", "error");
        const auto variant = [](const QVariant &value) { return QVariant::fromValue(QDBusVariant(value)); };
        const auto row = [](const QString &interface, const QString &method, const QVariantList &arguments,
                            const QString &error) {
            QTest::addRow("%s %lld %s", qPrintable(method), qlonglong(arguments.size()),
                          qPrintable(arguments.value(1).toString()))
                << interface << method << arguments << "org.freedesktop.DBus.Error." + error;
        };
        row(PlayerInterface, "Dance", {}, "UnknownMethod");
        row(Root, "Next", {}, "UnknownMethod");
        row(PlayerInterface, "Next", {1}, "InvalidArgs");
        row(PlayerInterface, "OpenUri", {"file:///a.ogg"}, "NotSupported");
        row(Properties, "Get", {"a.b", "Rate"}, "UnknownInterface");
        row(Properties, "Get", {PlayerInterface, "Colour"}, "UnknownProperty");
        row(Properties, "Set", {PlayerInterface, "CanSeek", variant(true)}, "PropertyReadOnly");
        row(Properties, "Set", {PlayerInterface, "LoopStatus", variant("Twice")}, "InvalidArgs");
        row(Properties, "Set", {PlayerInterface, "Shuffle", variant(1)}, "InvalidArgs");
        row(Properties, "Set", {PlayerInterface, "Volume", variant(0.5)}, "Failed");
        row(Properties, "Forget", {PlayerInterface}, "UnknownMethod");
        row(Properties, "Forget", {}, "UnknownMethod");
        row(Properties, "Get", {}, "InvalidArgs");
    }

    void calls_thatAreWrong_getAnError()
    {
        QFETCH(const QString, interface);
        QFETCH(const QString, method);
        QFETCH(const QVariantList, arguments);
        appear();
        tell(R"(msg::metadata|dat:json:{"repeat_mode":"none","shuffle_mode":"off"})");
        QTEST(call(interface, method, arguments).errorName(), "error");
        QCOMPARE(holder->rest(), QByteArrayList());
    }
};

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc == 2 && qstrcmp(argv[1], "hold") == 0) {
        DesktopApplication desktopApplication;
        Talk holder(PlayerControl);
        holder.acquire("a");
        return QCoreApplication::exec();
    }
    TestMpris test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_mpris.moc"
