/*
 * Processor time for a minute of mp3, beside playbin3 in the application's process, both at the same time. Argument: a
 * folder with minute.mp3, which is longer than a minute; VORO_BENCH_DAEMON names the daemon's process.
 */

#include "Contestants.h"
#include "Figures.h"
#include "Processes.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>

#include <unistd.h>

#include <chrono>
#include <string>

using namespace std::chrono_literals;

namespace {

double oursTime()
{
    const pid_t daemon = bench::daemonProcess();
    double sum = bench::processorTime(getpid()) + bench::processorTime(daemon);
    for (const pid_t worker : bench::descendants(daemon)) {
        sum += bench::processorTime(worker);
    }
    return sum;
}

/** Runs the event loop, as an application does. */
void live(std::chrono::milliseconds time)
{
    QTimer::singleShot(time, QCoreApplication::instance(), &QCoreApplication::quit);
    QCoreApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 2) {
        return 2;
    }
    const std::string path = std::string(argv[1]) + "/minute.mp3";
    bench::Ours ours;
    bench::PeerProcess peer("playbin3");
    ours.play(path);
    peer.play(path);
    // What starting costs is not what playing costs.
    live(2s);
    const double oursBefore = oursTime();
    const double peerBefore = bench::processorTime(peer.process());
    live(60s);
    const double oursUsed = oursTime() - oursBefore;
    const double peerUsed = bench::processorTime(peer.process()) - peerBefore;

    bench::printHead("Processor time");
    bench::printRow("a minute of mp3: application, daemon and workers", bench::text(oursUsed, 2, " s"),
                    bench::text(peerUsed, 2, " s (playbin3)"), "≤ 1.1 × playbin3");
}
