/*
 * How long applications wait for the news that the daemon is gone, and for their next commands: three players, a
 * recorder, a holder, two controllers and a key watcher in this process lose it in the middle of a command.
 * Arguments: a medium of sound, and how often each way is tried.
 */

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QTemporaryDir>
#include <QtCore/QUrl>

#include <Figures.h>
#include <Household.h>
#include <Processes.h>
#include <StartFolder.h>
#include <unistd.h>
#include <Workers.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <random>
#include <thread>
#include <vector>

namespace {

constexpr int Patience = 60'000;
constexpr int LongestEnd = 5'000;

/** Lets the event loop run until it is so; ends the program when that takes too long. */
void waitFor(const Household &household, const std::function<bool()> &isSo)
{
    QElapsedTimer time;
    time.start();
    while (!isSo()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::ExcludeUserInputEvents, 10);
        if (time.hasExpired(Patience)) {
            std::fprintf(stderr, "bench_loss: %s\n", qPrintable(household.report()));
            std::exit(1);
        }
    }
}

void start(Household &household)
{
    if (const QString problem = household.start(); !problem.isEmpty()) {
        std::fprintf(stderr, "bench_loss: %s\n", qPrintable(problem));
        std::exit(1);
    }
}

void measure(const char *name, int signal, const QUrl &medium, int rounds)
{
    const StartFolder runtime;
    const QTemporaryDir recordings;
    Household household(medium, recordings.path());
    std::mt19937 random(static_cast<unsigned>(signal));
    bench::Figures told;
    bench::Figures command;
    /** Daemons, their guardians and workers. */
    std::vector<pid_t> former;
    std::vector<QString> cutOff;
    int descriptors = 0;
    start(household);
    for (int round = 0; round < rounds; ++round) {
        waitFor(household, [&household] { return household.isAtWork(); });
        if (round == 1) {
            descriptors = bench::usage(getpid()).descriptors;
        }
        household.forget();
        const pid_t daemon = runtime.daemon();
        former.insert(former.end(), {daemon, bench::parentOf(daemon)});
        for (const pid_t worker : bench::descendants(daemon)) {
            former.push_back(worker);
        }
        cutOff.push_back(household.recording());
        int64_t lost = 0;
        std::thread killer([&] {
            lost = bench::now();
            kill(daemon, signal);
        });
        household.player(random() % Household::Players).seekTime(random() % 60'000);
        killer.join();
        waitFor(household, [&household] { return household.isTold(); });
        told.add(static_cast<double>(bench::now() - lost));
        waitFor(household, [daemon] { return hasEnded(daemon); });
        const int64_t asked = bench::now();
        household.player(0).play();
        command.add(static_cast<double>(bench::now() - asked));
        start(household);
    }
    waitFor(household, [&household] { return household.isAtWork(); });
    descriptors = bench::usage(getpid()).descriptors - descriptors;
    const auto processes = [&] {
        return std::count_if(former.begin(), former.end(), [](pid_t process) { return !hasEnded(process); });
    };
    // The last ones have a moment to end.
    QElapsedTimer time;
    time.start();
    while (processes() != 0 && !time.hasExpired(LongestEnd)) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
    }
    const auto incomplete =
        std::count_if(cutOff.begin(), cutOff.end(), [](const QString &file) { return !Household::isComplete(file); });

    const auto row = [&](const char *what, const bench::Figures &figures, const char *wanted) {
        bench::printRow(std::string("daemon ") + name + ", " + std::to_string(rounds) + " times: " + what + ", median",
                        bench::milliseconds(figures.median()), "–", "");
        bench::printRow(std::string("daemon ") + name + ": " + what + ", at worst",
                        bench::milliseconds(figures.quantile(1)), "–", wanted);
    };
    row("until everybody is told", told, "≤ 500 ms");
    row("a player's next play(), which starts another daemon", command, "");
    bench::printRow(std::string("daemon ") + name
                        + ": left behind: descriptors of the application; processes; recordings that are not complete",
                    std::to_string(descriptors) + "; " + std::to_string(processes()) + "; "
                        + std::to_string(incomplete),
                    "–", "0; 0; 0");
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "usage: bench_loss MEDIUM ROUNDS\n");
        return 2;
    }
    qputenv("VORO_AUDIO_SINK", "fakesink sync=true");
    qputenv("VORO_AUDIO_SOURCE", "audiotestsrc is-live=true");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    const QUrl medium = QUrl::fromLocalFile(QString::fromLocal8Bit(argv[1]));
    bench::printHead("What applications see of a daemon's death");
    measure("killed", SIGKILL, medium, std::atoi(argv[2]));
    measure("stopped", SIGSTOP, medium, std::atoi(argv[2]));
    return 0;
}
