/*
 * What prepared players cost, beside the peers. Argument: a folder with a.ogg; VORO_BENCH_DAEMON names the daemon's
 * process.
 */

#include "Contestants.h"
#include "Figures.h"
#include "Processes.h"

#include <multimedia/MediaPlayer.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QUrl>

#include <unistd.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

using namespace voro::multimedia;

namespace {

constexpr int Prepared = 16;

/** What players add to the application, and what they take with the processes that serve it. */
struct Cost {
    long application = 0;
    long altogether = 0;
    int threads = 0;
};

struct Costs {
    Cost one;
    Cost all;
    /** When they have rested; only ours give back what they do not need. */
    Cost rested;
};

/** The application's memory is all that it maps: its share of what is shared would shrink with each worker. */
Costs measure(pid_t application, const std::function<void()> &prepare, const std::function<long()> &others,
              const std::function<void()> &rest = {})
{
    const bench::Usage before = bench::usage(application);
    const auto cost = [&] {
        const bench::Usage after = bench::usage(application);
        return Cost{after.rss - before.rss, after.rss - before.rss + others(), after.threads - before.threads};
    };
    Costs costs;
    prepare();
    costs.one = cost();
    for (int i = 1; i < Prepared; ++i) {
        prepare();
    }
    costs.all = cost();
    if (rest) {
        rest();
        costs.rested = cost();
    }
    return costs;
}

Costs measureOurs(const std::string &path)
{
    std::vector<std::unique_ptr<MediaPlayer>> players;
    const auto prepare = [&] {
        players.push_back(std::make_unique<MediaPlayer>());
        players.back()->setSourceUrl(QUrl::fromLocalFile(QString::fromStdString(path)));
        bench::must(players.back()->prepare());
        QCoreApplication::processEvents();
    };
    const pid_t daemon = bench::daemonProcess();
    const auto others = [daemon] {
        bench::waitForCalm(daemon);
        return bench::servicePss();
    };
    const auto rest = [daemon] {
        while (bench::descendants(daemon).size() > bench::Resting) {
            bench::waitForEnd(bench::descendants(daemon), 60'000);
        }
    };
    return measure(getpid(), prepare, others, rest);
}

Costs measurePeer(const std::string &name, const std::string &path)
{
    bench::PeerProcess peer(name);
    return measure(
        peer.process(), [&] { peer.prepare(path); }, [] { return 0L; });
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 2) {
        return 2;
    }
    const std::string path = std::string(argv[1]) + "/a.ogg";

    bench::silenceLibrary();
    bench::printHead("What prepared players cost (ogg)");
    const Costs ours = measureOurs(path);
    const std::vector<std::string> names = {"qmediaplayer", "mpv", "playbin3"};
    std::vector<Costs> peers;
    for (const std::string &name : names) {
        peers.push_back(measurePeer(name, path));
    }

    const auto row = [&](const std::string &what, auto value, const std::string &wanted) {
        std::string others;
        for (size_t i = 0; i < names.size(); ++i) {
            others += (i > 0 ? ", " : "") + value(peers[i]) + " (" + names[i] + ")";
        }
        bench::printRow(what, value(ours), others, wanted);
    };
    row(
        "16 players: memory in the application",
        [](const Costs &costs) { return bench::megabytes(costs.all.application); }, "< 3 MB");
    row(
        "16 players: memory altogether", [](const Costs &costs) { return bench::megabytes(costs.all.altogether); },
        "< 200 MB");
    bench::printRow("the same, 10 s later", bench::megabytes(ours.rested.altogether), "–", "< 20 MB");
    row(
        "16 players: threads in the application", [](const Costs &costs) { return std::to_string(costs.all.threads); },
        "0");
    row(
        "one player: memory altogether", [](const Costs &costs) { return bench::megabytes(costs.one.altogether); },
        "< 45 MB");
}
