/* What prepared players add to the application beside playbin3 in its process, and whether a thousand players leave
   anything behind. Argument: a folder with a.ogg; VORO_BENCH_DAEMON names the daemon's process. */

#include "Figures.h"
#include "Processes.h"

#include <multimedia/MediaPlayer.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QUrl>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

using namespace voro::multimedia;

namespace {

constexpr int Prepared = 16;
constexpr int Churned = 1000;

struct Added {
    double pss;
    double threads;
};

Added addedBy(const bench::Usage &before, const bench::Usage &after, int count)
{
    return {double(after.pss - before.pss) / count, double(after.threads - before.threads) / count};
}

std::unique_ptr<MediaPlayer> prepared(const QUrl &url)
{
    auto player = std::make_unique<MediaPlayer>();
    player->setSourceUrl(url);
    if (player->prepare() != MediaError::None) {
        std::fprintf(stderr, "the player failed\n");
        std::exit(1);
    }
    QCoreApplication::processEvents();
    return player;
}

Added measureOurs(const QUrl &url)
{
    // One player beforehand: what the library itself costs once is not what a player adds.
    const auto first = prepared(url);
    const bench::Usage before = bench::usage(getpid());
    std::vector<std::unique_ptr<MediaPlayer>> players;
    for (int i = 0; i < Prepared; ++i)
        players.push_back(prepared(url));
    return addedBy(before, bench::usage(getpid()), Prepared);
}

Added measurePeer(const std::string &program, const std::string &uri)
{
    bench::Child child({program});
    child.line();
    const auto prepare = [&] {
        child.send("prepare " + uri);
        child.line();
    };
    prepare();
    const bench::Usage before = bench::usage(child.process());
    for (int i = 0; i < Prepared; ++i)
        prepare();
    return addedBy(before, bench::usage(child.process()), Prepared);
}

/** How many workers a daemon has besides the spare one, when those that were killed have ended. */
size_t leftWorkers(pid_t daemon)
{
    for (;;) {
        const auto workers = bench::descendants(daemon);
        if (workers.size() <= 1 || !bench::waitForEnd(workers, 5'000))
            return workers.empty() ? 0 : workers.size() - 1;
    }
}

void measureChurn(const QUrl &url, bool doesPrepare)
{
    const auto churn = [&](int count) {
        for (int i = 0; i < count; ++i) {
            if (doesPrepare)
                prepared(url);
            else
                MediaPlayer();
        }
        QCoreApplication::processEvents();
    };
    churn(Churned / 10);
    const pid_t daemon = std::atoi(std::getenv("VORO_BENCH_DAEMON"));
    leftWorkers(daemon);
    const bench::Usage before = bench::usage(getpid());
    const bench::Usage daemonBefore = bench::usage(daemon);
    churn(Churned);
    const size_t left = leftWorkers(daemon);
    const bench::Usage after = bench::usage(getpid());
    const bench::Usage daemonAfter = bench::usage(daemon);

    const std::string what =
        std::string("1000 players ") + (doesPrepare ? "made, prepared" : "made") + " and destroyed: ";
    const auto kilobytes = [](const bench::Usage &a, const bench::Usage &b) {
        return bench::text(double(b.pss - a.pss), 0, " kB");
    };
    bench::printRow(what + "memory of the application", kilobytes(before, after), "–", "flat");
    bench::printRow(what + "memory of the daemon", kilobytes(daemonBefore, daemonAfter), "–", "flat");
    bench::printRow(what + "descriptors, application and daemon",
                    std::to_string(after.descriptors - before.descriptors) + " and "
                        + std::to_string(daemonAfter.descriptors - daemonBefore.descriptors),
                    "–", "0");
    bench::printRow(what + "processes left", std::to_string(left), "–", "0");
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 2 || !std::getenv("VORO_BENCH_DAEMON"))
        return 2;
    const std::string path = std::string(argv[1]) + "/a.ogg";
    const QUrl url = QUrl::fromLocalFile(QString::fromStdString(path));

    bench::printHead("What players cost");
    const Added ours = measureOurs(url);
    const Added theirs =
        measurePeer(QCoreApplication::applicationDirPath().toStdString() + "/peer_playbin3", "file://" + path);
    bench::printRow("memory that a prepared player adds to the application (PSS)", bench::text(ours.pss, 0, " kB"),
                    bench::text(theirs.pss, 0, " kB (playbin3)"), "< 150 kB");
    bench::printRow("threads that it adds", bench::text(ours.threads, 1, ""),
                    bench::text(theirs.threads, 1, " (playbin3)"), "0");
    measureChurn(url, false);
    measureChurn(url, true);
}
