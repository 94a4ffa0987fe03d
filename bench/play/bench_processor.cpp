/*
 * Processor time, wakeups and memory for a minute of mp3, beside playbin3 in the application's process and mpv, all at
 * the same time, and the wakeups of a player that is paused, of one that is prepared and without any. Argument: a
 * folder with minute.mp3, which is longer than a minute; VORO_BENCH_DAEMON names the daemon's process.
 */

#include "Contestants.h"
#include "Figures.h"
#include "Processes.h"

#include <multimedia/MediaPlayer.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>
#include <QtCore/QUrl>

#include <unistd.h>

#include <chrono>
#include <map>
#include <string>

using namespace std::chrono_literals;
using namespace voro::multimedia;

namespace {

struct Cost {
    double time = 0;
    long wakeups = 0;

    void add(pid_t process)
    {
        time += bench::processorTime(process);
        wakeups += bench::wakeups(process);
    }
    Cost operator-(const Cost &other) const { return {time - other.time, wakeups - other.wakeups}; }
};

/** Of each process: application, daemon and workers. */
using Costs = std::map<pid_t, Cost>;

Costs oursCosts()
{
    const pid_t daemon = bench::daemonProcess();
    Costs costs;
    costs[getpid()].add(getpid());
    costs[daemon].add(daemon);
    for (const pid_t worker : bench::descendants(daemon)) {
        costs[worker].add(worker);
    }
    return costs;
}

/** What the processes that are still there have cost since then. */
Cost oursSince(const Costs &before)
{
    Cost sum;
    for (const auto &[process, cost] : oursCosts()) {
        const auto found = before.find(process);
        const Cost since = found == before.end() ? cost : cost - found->second;
        sum.time += since.time;
        sum.wakeups += since.wakeups;
    }
    return sum;
}

Cost costOf(const bench::PeerProcess &peer)
{
    Cost cost;
    cost.add(peer.process());
    return cost;
}

/** Runs the event loop, as an application does. */
void live(std::chrono::milliseconds time)
{
    QTimer::singleShot(time, QCoreApplication::instance(), &QCoreApplication::quit);
    QCoreApplication::exec();
}

std::string perSecond(long wakeups, std::chrono::seconds time)
{
    return bench::text(static_cast<double>(wakeups) / static_cast<double>(time.count()), 1, "");
}

/** The wakeups of all when what was done before has come to rest, and workers that rest were given back. */
std::string oursAtRest()
{
    live(15s);
    const Costs before = oursCosts();
    live(20s);
    return perSecond(oursSince(before).wakeups, 20s);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 2) {
        return 2;
    }
    const std::string path = std::string(argv[1]) + "/minute.mp3";
    bench::silenceLibrary();
    const std::string nobody = oursAtRest();

    const long applicationBefore = bench::usage(getpid()).rss;
    MediaPlayer player;
    player.setSourceUrl(QUrl::fromLocalFile(QString::fromStdString(path)));
    bench::must(player.prepare());
    const std::string prepared = oursAtRest();

    // What starting costs is not what playing costs.
    bench::must(player.play());
    live(5s);
    const Costs aloneBefore = oursCosts();
    live(20s);
    const Cost alone = oursSince(aloneBefore);
    // Peers would take a share of the pages of libraries that are theirs, too.
    const long memory = bench::usage(getpid()).rss - applicationBefore + bench::servicePss();
    bench::must(player.stop());

    bench::PeerProcess playbin("playbin3");
    bench::PeerProcess mpv("mpv");
    const long playbinMemory = bench::usage(playbin.process()).rss;
    const long mpvMemory = bench::usage(mpv.process()).rss;
    bench::must(player.play());
    playbin.play(path);
    mpv.play(path);
    live(5s);
    const Costs oursBefore = oursCosts();
    const Cost playbinBefore = costOf(playbin);
    const Cost mpvBefore = costOf(mpv);
    live(60s);
    const Cost ours = oursSince(oursBefore);
    const Cost ofPlaybin = costOf(playbin) - playbinBefore;
    const Cost ofMpv = costOf(mpv) - mpvBefore;
    const long memoryOfPlaybin = bench::usage(playbin.process()).rss - playbinMemory;
    const long memoryOfMpv = bench::usage(mpv.process()).rss - mpvMemory;
    bench::must(player.pause());
    const std::string paused = oursAtRest();

    bench::printHead("Processor time and wakeups: application, daemon and workers");
    bench::printRow("a minute of mp3, processor time", bench::text(ours.time, 2, " s"),
                    bench::text(ofPlaybin.time, 2, " s (playbin3), ") + bench::text(ofMpv.time, 2, " s (mpv)"),
                    "≤ 1.1 × playbin3");
    bench::printRow("memory altogether while it plays, which the peers' processes grow by", bench::megabytes(memory),
                    bench::megabytes(memoryOfPlaybin, " (playbin3), ") + bench::megabytes(memoryOfMpv, " (mpv)"),
                    "≤ 18 MB");
    bench::printRow("wakeups a second while it plays", perSecond(ours.wakeups, 60s),
                    perSecond(ofPlaybin.wakeups, 60s) + " (playbin3), " + perSecond(ofMpv.wakeups, 60s) + " (mpv)",
                    "≤ 20");
    bench::printRow("the same with no other program at the sound server", perSecond(alone.wakeups, 20s), "–", "≤ 20");
    bench::printRow("wakeups a second, paused", paused, "–", "0");
    bench::printRow("wakeups a second, prepared", prepared, "–", "0");
    bench::printRow("wakeups a second, nobody there", nobody, "–", "0");
}
