#include "Daemon.h"
#include "PulseServer.h"
#include "Talk.h"
#include "TestBus.h"

#include <QtTest/QtTest>

#include <Programs.h>
#include <Rows.h>

#include <memory>

namespace {

/** The null sink's volume in percent, and "muted" when it is. */
QByteArray sink()
{
    static const QRegularExpression percent("(\\d+)%");
    const QString volume = PulseServer::control({"get-sink-volume", "null"});
    const bool isMuted = PulseServer::control({"get-sink-mute", "null"}).contains("yes");
    return percent.match(volume).captured(1).toLatin1() + (isMuted ? " muted" : "");
}

} // namespace

class TestVolume : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        server = std::make_unique<PulseServer>();
        bus = std::make_unique<TestBus>();
        daemon = std::make_unique<Daemon>();
    }
    void cleanup()
    {
        daemon.reset();
        bus.reset();
        server.reset();
    }

    void commands_changeTheDefaultSink_data()
    {
        const Rows<QString, QByteArrayList, QByteArray> row("before", "commands", "after");
        using Commands = QByteArrayList;
        row("set to nothing", "40%", Commands{"v_set|dat::0"}, "0");
        row("by a number", "40%", Commands{"v_up|dat::7", "v_down|dat::30"}, "17");
        row("quick steps", "40%", Commands{"v_up", "v_up", "v_up", "v_down"}, "50");
        row("up to the end", "97%", Commands{"v_up", "v_up"}, "100");
        row("down to the end", "3%", Commands{"v_down", "v_down"}, "0");
        row("up from above the end", "130%", Commands{"v_up", "v_up", "v_mute|dat:b:true"}, "130 muted");
        row("mute and not", "40%", Commands{"v_mute|dat:b:true", "v_mute|dat:b:false", "v_up"}, "45");
    }

    void commands_changeTheDefaultSink()
    {
        QFETCH(const QString, before);
        QFETCH(const QByteArrayList, commands);
        PulseServer::control({"set-sink-volume", "null", before});
        Talk controller;
        for (const QByteArray &command : commands) {
            controller.write("msg::" + command);
        }
        QFETCH(const QByteArray, after);
        QTRY_COMPARE(sink(), after);
        QCOMPARE(controller.rest(), QByteArrayList());
    }

    void player_onTheBus_hasTheSinksVolume()
    {
        PulseServer::control({"set-sink-volume", "null", "40%"});
        Talk holder(PlayerControl);
        holder.acquire("a");
        QVERIFY(holder.waitFor(Send));
        const auto volume = [] { return runToEnd("playerctl", {"volume"}).value_or("").trimmed(); };
        QTRY_COMPARE(volume(), "0.400000");
        PulseServer::control({"set-sink-volume", "null", "55%"});
        QTRY_COMPARE(volume(), "0.550000");
        QVERIFY(runToEnd("playerctl", {"volume", "0.25"}));
        QCOMPARE(sink(), "25");
        QCOMPARE(volume(), "0.250000");
    }

    void server_thatGoes_makesCommandsFail()
    {
        PulseServer::control({"set-sink-volume", "null", "40%"});
        Talk controller;
        controller.write("msg::v_up");
        QTRY_COMPARE(sink(), "45");
        server->kill();
        controller.write("msg::v_up");
        QCOMPARE(controller.next(), failure("v_up", "there is no sound server"));
        controller.write("msg::v_mute|dat:b:true");
        QCOMPARE(controller.next(), failure("v_mute", "there is no sound server"));
    }

private:
    std::unique_ptr<PulseServer> server;
    std::unique_ptr<TestBus> bus;
    std::unique_ptr<Daemon> daemon;
};

QTEST_GUILESS_MAIN(TestVolume)
#include "tst_volume.moc"
