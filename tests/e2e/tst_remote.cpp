// A media application and a remote with the real services: what blocks does not block for long, whatever happens.

#include "ChildProcess.h"
#include "Daemon.h"
#include "LogCatcher.h"
#include "Talk.h"
#include "TestBus.h"

#include <multimedia/NowPlayingController.h>

#include <QtTest/QtTest>

#include <Rows.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <memory>

using namespace voro::multimedia;

namespace {

/** The longest time that a getter may take, in milliseconds. */
constexpr qint64 Limit = 250;
/** A machine that is busy with other things may be late, but not every time. */
constexpr int Attempts = 5;

/** What the holder of the role does when it is asked for its metadata. */
enum class Holder { None, Answers, Ignores, IsStopped, Ends, GivesWay, KillsService };

void obey(Holder kind, Talk &holder, Talk &other, pid_t service)
{
    switch (kind) {
    case Holder::Answers:
        holder.write(R"(msg::metadata|dat:json:{"track":"T"})");
        break;
    case Holder::Ends:
        _exit(0);
    case Holder::GivesWay:
        other.acquire("b");
        break;
    case Holder::KillsService:
        kill(service, SIGKILL);
        break;
    default:
        break;
    }
}

/** Holds the role in a process of its own, until it is killed or the service goes. */
int hold(ChildProcess &parent, Holder kind, pid_t service)
{
    Talk holder(PlayerControl);
    Talk other(PlayerControl);
    holder.acquire("a");
    holder.waitFor(R"({"dat":"holdData","msg":"track"})");
    parent.say();
    for (QByteArray message = holder.next(); message != "END"; message = holder.next()) {
        if (message.contains("sendData")) {
            obey(kind, holder, other, service);
        }
    }
    return 0;
}

/** The services, and who holds the role. */
class Stage {
public:
    enum Bus { NoBus, BusHangs };
    Stage(Holder kind, Bus bus) : m_kind(kind)
    {
        if (bus == BusHangs) {
            m_bus = std::make_unique<TestBus>();
            m_bus->stop();
        }
        if (!m_daemon.start()) {
            qFatal("vorod does not start");
        }
        if (kind == Holder::None) {
            return;
        }
        const auto service = static_cast<pid_t>(m_daemon.processId());
        m_holder = std::make_unique<ChildProcess>([=](ChildProcess &child) { return hold(child, kind, service); });
        if (!m_holder->hear()) {
            qFatal("nobody holds the role");
        }
        if (kind == Holder::IsStopped) {
            kill(m_holder->process(), SIGSTOP);
        }
    }
    ~Stage()
    {
        if (m_kind == Holder::KillsService) {
            m_daemon.kill();
        }
    }
    Q_DISABLE_COPY_MOVE(Stage)

private:
    const Holder m_kind;
    Daemon m_daemon{Daemon::Later};
    std::unique_ptr<TestBus> m_bus;
    std::unique_ptr<ChildProcess> m_holder;
};

using Getter = void (*)(const NowPlayingController &);

template<auto Function>
void get(const NowPlayingController &controller)
{
    static_cast<void>((controller.*Function)());
}

using C = NowPlayingController;
constexpr std::pair<const char *, Getter> Getters[] = {
    {"mediaState", get<&C::mediaState>}, {"metaData", get<&C::metaData>}, {"position", get<&C::position>}};

} // namespace

class RemoteTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void getter_isQuick_whateverBecomesOfTheRole_data();
    void getter_isQuick_whateverBecomesOfTheRole();
};

void RemoteTest::getter_isQuick_whateverBecomesOfTheRole_data()
{
    // Each getter is the first one, or finds what the one before left.
    const Rows<Holder, Stage::Bus, bool> row("holder", "bus", "isFirst");
    row("free", Holder::None, Stage::NoBus, false);
    row("free, and the bus hangs", Holder::None, Stage::BusHangs, true);
    row("held", Holder::Answers, Stage::NoBus, false);
    row("the holder says nothing", Holder::Ignores, Stage::NoBus, false);
    row("the holder is stopped", Holder::IsStopped, Stage::NoBus, false);
    row("falls free meanwhile", Holder::Ends, Stage::NoBus, true);
    row("changes hands meanwhile", Holder::GivesWay, Stage::NoBus, true);
    row("the service dies meanwhile", Holder::KillsService, Stage::NoBus, true);
}

void RemoteTest::getter_isQuick_whateverBecomesOfTheRole()
{
    QFETCH(Holder, holder);
    QFETCH(Stage::Bus, bus);
    QFETCH(bool, isFirst);
    const voro::test::LogCatcher log;
    std::unique_ptr<Stage> stage;
    const NowPlayingController controller;
    for (const auto &[name, getter] : Getters) {
        qint64 shortest = Limit;
        for (int i = 0; i < Attempts && shortest >= Limit; ++i) {
            if (isFirst) {
                stage.reset();
            }
            if (!stage) {
                stage = std::make_unique<Stage>(holder, bus);
            }
            QElapsedTimer timer;
            timer.start();
            getter(controller);
            shortest = timer.elapsed();
        }
        QVERIFY2(shortest < Limit, qPrintable(QStringLiteral("%1: %2 ms").arg(QLatin1String(name)).arg(shortest)));
    }
}

QTEST_GUILESS_MAIN(RemoteTest)
#include "tst_remote.moc"
