#include <QtTest/QtTest>

#include <pps/broker/Broker.h>
#include <pps/Connection.h>
#include <pps/Text.h>
#include <renderer/common/Protocol.h>
#include <renderer/service/WorkerPool.h>
#include <Rows.h>
#include <sys/socket.h>
#include <unistd.h>
#include <Workers.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <ctime>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

using namespace voro;
using namespace voro::renderer;

namespace {

constexpr Worker::Limits Limits{.check = 20, .silence = 400, .request = 900, .localOpening = 600};
constexpr std::chrono::milliseconds LittleTime{200};
constexpr long FewThreads = 8;
constexpr size_t LittleMemory = size_t{256} << 20;
/** For a worker that never connects. The usual limit is for the others: none of them fails because it starts slowly. */
constexpr int ShortStart = 500;
/** Says in the environment that a process is this program's worker. */
constexpr const char *IsWorker = "VORO_TEST_IS_WORKER";
/** Says in a worker's environment that it is to hang while it starts. */
constexpr const char *HangsAtStart = "VORO_TEST_HANGS_AT_START";

// What this test's worker takes requests for.
using FallSilent = requests::Stop;
using AnswerAndFallSilent = requests::Set;
/** Gets on if a track is named, and rests so many milliseconds in between. */
using Work = requests::Seek;
using Multiply = requests::Play;
using Grow = requests::Close;
using Anything = SpeedChange;

bool hasSocket()
{
    int type = 0;
    socklen_t size = sizeof type;
    return getsockopt(WorkerSocket, SOL_SOCKET, SO_TYPE, &type, &size) == 0 && type == SOCK_SEQPACKET;
}

std::chrono::nanoseconds usedTime()
{
    timespec used{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return std::chrono::seconds(used.tv_sec) + std::chrono::nanoseconds(used.tv_nsec);
}

/**
 * Uses much processor time, between rests, and reports progress or that it stays where it is; an event at the end. On a
 * busy machine that takes long: a worker that has to be ended goes on until the daemon notices it.
 */
void workHard(pps::Connection &link, bool getsOn, std::chrono::milliseconds rest)
{
    const auto begin = usedTime();
    const auto most = getsOn ? 3 * LittleTime : rest.count() > 0 ? 3 * LittleTime / 2 : 100 * LittleTime;
    for (int position = 0; usedTime() - begin < most;) {
        std::string text = answer("ping", 0, {});
        pps::appendNumber(text, PositionName, getsOn ? ++position : 0);
        link.write(text);
        for (const auto start = usedTime(); usedTime() - start < std::chrono::milliseconds(5);) {
        }
        std::this_thread::sleep_for(rest);
    }
    link.write(toText(events::Silent{}));
}

/** A worker that lives but does not do what it is asked for; some requests it takes for others. */
int runWorker()
{
    if (qEnvironmentVariableIsSet(HangsAtStart)) {
        return pause();
    }
    pps::Connection link;
    if (!link.openOn(WorkerSocket, WorkerPath, pps::PublishSubscribe)) {
        return 1;
    }
    for (std::string text; link.read(text, true);) {
        pps::Message message;
        message.parse(text);
        const Request request = parseRequest(message).value();
        if (std::holds_alternative<requests::Ping>(request)) {
            link.write(answer("ping", message.number("id"), {}));
        } else if (std::holds_alternative<FallSilent>(request)) {
            pause();
        } else if (std::holds_alternative<AnswerAndFallSilent>(request)) {
            link.write(answer("set", message.number("id"), {}));
            pause();
        } else if (const auto *work = std::get_if<Work>(&request)) {
            workHard(link, work->target.track > 0, std::chrono::milliseconds(work->target.milliseconds));
        } else if (std::holds_alternative<Multiply>(request)) {
            std::vector<std::thread> threads(FewThreads);
            std::ranges::generate(threads, [] { return std::thread(pause); });
            pause();
        } else if (std::holds_alternative<Grow>(request)) {
            const std::vector<char> memory(LittleMemory, 1);
            pause();
        }
    }
    return 0;
}

/** A context that notes its worker's death. */
class Listener : public EngineListener {
public:
    void engineEvent(const Event &) override { hasHeard = true; }
    void engineDied() override { isDead = true; }
    void engineNeedsNetwork() override {}

    bool isDead = false;
    bool hasHeard = false;
};

/** A context with a worker of this program's. */
struct Player {
    explicit Player(const Worker::Limits &limits)
        : pool(broker, {QCoreApplication::applicationFilePath().toStdString(), limits})
    {
        QObject::connect(&ready, &QSocketNotifier::activated, [this] { broker.process(); });
        engine = pool.start(listener, pps::Accounts::Services, {});
    }

    pps::Broker broker;
    QSocketNotifier ready{broker.fd(), QSocketNotifier::Read};
    WorkerPool pool;
    Listener listener;
    std::unique_ptr<Engine> engine;
};

} // namespace

/** How long a worker may take, and what it may use. */
class tst_Worker : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void workerThatTakesTooLong_isEnded_data()
    {
        const Rows<Request, int, ErrorCode> row("request", "limit", "error");
        const auto open = [](const char *url) {
            requests::Open request;
            request.medium = Medium(url);
            return request;
        };
        row("a local medium", open("/a.ogg"), Limits.localOpening, ErrorCode::SourceUnavailable);
        row("a medium of the net", open("http://x/a.ogg"), Limits.request, ErrorCode::SourceUnavailable);
        row("any other request", Anything{}, Limits.request, ErrorCode::Internal);
        row("silence", FallSilent{}, Limits.silence, ErrorCode::Internal);
        row("start", Anything{}, ShortStart, ErrorCode::Internal);
    }

    void workerThatTakesTooLong_isEnded()
    {
        QFETCH(const Request, request);
        QFETCH(const int, limit);
        Worker::Limits limits = Limits;
        if (limit == ShortStart) {
            limits.start = ShortStart;
            qputenv(HangsAtStart, "1");
        }
        const auto restore = qScopeGuard([] { qunsetenv(HangsAtStart); });
        Player player(limits);
        QVERIFY(player.engine);
        std::optional<Result> result;
        QElapsedTimer time;
        time.start();
        player.engine->ask(request, [&](const Result &told) { result = told; });
        QTRY_VERIFY_WITH_TIMEOUT(result, 20'000);
        QVERIFY2(time.elapsed() >= limit, qPrintable(QString::number(time.elapsed())));
        QTEST(result->code, "error");
        QVERIFY(player.listener.isDead);
    }

    void workerThatPlays_isEndedWhenItFallsSilent()
    {
        Player player(Limits);
        QVERIFY(player.engine);
        bool isAnswered = false;
        player.engine->ask(AnswerAndFallSilent{}, [&](const Result &) { isAnswered = true; });
        QTRY_VERIFY_WITH_TIMEOUT(isAnswered, 20'000);
        player.engine->setWatched(true);
        QTRY_VERIFY_WITH_TIMEOUT(player.listener.isDead, 20'000);
    }

    void workerThatUsesTooMuch_isEnded_data()
    {
        const Rows<Request, bool> row("request", "isEnded");
        row("processor time without progress", Work{{.track = 0}}, true);
        row("processor time with progress", Work{{.track = 1}}, false);
        row("processor time of a long rest", Work{{.track = 0, .milliseconds = 100}}, false);
        row("threads", Multiply{}, true);
        row("memory", Grow{}, true);
    }

    void workerThatUsesTooMuch_isEnded()
    {
        QFETCH(const Request, request);
        Player player({.check = 100, .usage = {LittleTime, FewThreads, LittleMemory}});
        QVERIFY(player.engine);
        player.engine->ask(request, [](const Result &) {});
        QTRY_VERIFY_WITH_TIMEOUT(player.listener.isDead || player.listener.hasHeard, 60'000);
        QTEST(player.listener.isDead, "isEnded");
    }

    void spareWorker_isThereWhileAContextHasNone()
    {
        const auto workers = [] { return workersOf(getpid()).size(); };
        Player player({});
        QVERIFY(player.engine);
        QTRY_COMPARE(workers(), 1);
        player.pool.setContexts(2);
        QTRY_COMPARE(workers(), 2);
        player.pool.setContexts(1);
        QTRY_COMPARE(workers(), 1);
        QVERIFY(!player.listener.isDead);
        // Its context has none now.
        const QList<pid_t> atWork = workersOf(getpid());
        player.engine.reset();
        QTRY_VERIFY(workers() == 1 && workersOf(getpid()) != atWork);
        player.pool.setContexts(0);
        QTRY_COMPARE(workers(), 0);
    }

    void spareWorker_thatDied_isNotHandedOut()
    {
        Player player({});
        QVERIFY(player.engine);
        QTRY_COMPARE(workersOf(getpid()).size(), 1);
        QList<pid_t> workers = workersOf(getpid());
        const pid_t atWork = workers.first();
        player.pool.setContexts(2);
        QTRY_COMPARE((workers = workersOf(getpid())).size(), 2);
        const pid_t spare = workers.first() == atWork ? workers.last() : workers.first();
        kill(spare, SIGKILL);
        QTRY_VERIFY(!workersOf(getpid()).contains(spare));
        Listener listener;
        const auto engine = player.pool.start(listener, pps::Accounts::Services, {});
        QVERIFY(engine);
        std::optional<Result> result;
        engine->ask(AnswerAndFallSilent{}, [&result](const Result &answer) { result = answer; });
        QTRY_VERIFY(result);
        QVERIFY(*result);
    }
};

int main(int argc, char **argv)
{
    // One without its socket would run the test again, with workers of its own.
    if (qEnvironmentVariableIsSet(IsWorker)) {
        return hasSocket() ? runWorker() : 1;
    }
    qputenv(IsWorker, "yes");
    QCoreApplication application(argc, argv);
    tst_Worker test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_worker.moc"
