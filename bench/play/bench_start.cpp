/*
 * From play() to the first sound where it is not as usual: beside a client of the sound server that decodes nothing,
 * from a player that rested, after a worker's crash, and without a daemon. Arguments: a folder with a.EXT and b.EXT,
 * the number of runs; VORO_BENCH_DAEMON names the daemon's process.
 */

#include "BareClient.h"
#include "Contestants.h"
#include "Figures.h"
#include "Processes.h"
#include "SoundWatch.h"

#include <multimedia/MediaPlayer.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QTemporaryDir>
#include <QtCore/QUrl>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

using namespace voro::multimedia;

namespace {

using bench::Figures;

/** The workers of the daemon, without what forks them. */
std::vector<pid_t> workers()
{
    std::vector<pid_t> found;
    for (const pid_t process : bench::descendants(bench::daemonProcess())) {
        std::string name;
        std::getline(std::ifstream("/proc/" + std::to_string(process) + "/comm") >> std::ws, name);
        if (name == "voro-renderer") {
            found.push_back(process);
        }
    }
    return found;
}

void live(int milliseconds)
{
    for (const QDeadlineTimer end(milliseconds); !end.hasExpired();) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, static_cast<int>(end.remainingTime()));
    }
}

std::unique_ptr<MediaPlayer> prepared(const std::string &path)
{
    auto player = std::make_unique<MediaPlayer>();
    bench::must(player->setSourceUrl(QUrl::fromLocalFile(QString::fromStdString(path))));
    bench::must(player->prepare());
    return player;
}

void addPlay(bench::SoundWatch &watch, MediaPlayer &player, Figures &times)
{
    watch.arm();
    const int64_t asked = bench::now();
    bench::must(player.play());
    if (const int64_t heard = watch.soundTime()) {
        times.add(static_cast<double>(heard - asked));
    }
    bench::must(player.reset());
}

/** What it takes at least. */
void measureLimit(bench::SoundWatch &watch, const std::string &folder, int runs)
{
    for (const std::string extension : {"wav", "ogg", "mp3", "mp4"}) {
        bench::Ours ours;
        bench::BareClient bare;
        Figures times[2];
        for (int i = -1; i < runs; ++i) {
            size_t which = 0;
            for (bench::Contestant *contestant :
                 {static_cast<bench::Contestant *>(&ours), static_cast<bench::Contestant *>(&bare)}) {
                watch.arm();
                const int64_t asked = contestant->play(folder + (i % 2 ? "/b." : "/a.") + extension);
                const int64_t heard = watch.soundTime();
                if (heard != 0 && i >= 0) {
                    times[which].add(static_cast<double>(heard - asked));
                }
                contestant->stop();
                ++which;
            }
        }
        bench::printRow("play() to first sound beside a client that decodes nothing, " + extension,
                        bench::milliseconds(times[0].median()), bench::milliseconds(times[1].median()),
                        extension == "wav" ? "≤ 1.5 ×" : "≤ 2 ×");
    }
}

void measureRested(bench::SoundWatch &watch, const std::string &folder, int runs)
{
    // More than the time after which a player gives its worker back.
    constexpr int Rest = 11'000;
    std::vector<std::unique_ptr<MediaPlayer>> players;
    for (int i = 0; i < runs; ++i) {
        players.push_back(prepared(folder + "/a.ogg"));
    }
    live(Rest);
    Figures times;
    for (const auto &player : players) {
        addPlay(watch, *player, times);
    }
    bench::printRow("play() of a player that rested to first sound, ogg", bench::milliseconds(times.median()), "–",
                    "as any play()");
}

void measureCrashed(bench::SoundWatch &watch, const std::string &folder, int runs)
{
    Figures times;
    for (int i = 0; i < runs; ++i) {
        const auto player = prepared(folder + "/a.ogg");
        const std::vector<pid_t> crashed = workers();
        for (const pid_t worker : crashed) {
            kill(worker, SIGKILL);
            bench::waitForEnd({worker}, 5'000);
        }
        addPlay(watch, *player, times);
    }
    bench::printRow("play() right after its worker's crash to first sound, ogg", bench::milliseconds(times.median()),
                    "–", "as any play()");
}

/** With a daemon of its own, which is started for it. */
int64_t playCold(bench::SoundWatch &watch, const std::string &path)
{
    const QTemporaryDir folder;
    const std::string runtime = folder.path().toStdString();
    setenv("VORO_RUNTIME_DIR", runtime.c_str(), 1);
    watch.arm();
    const int64_t asked = bench::now();
    bench::Child voro({bench::program("voro"), "play", "--no-publish", path});
    const int64_t heard = watch.soundTime();
    pid_t daemon = 0;
    std::ifstream(runtime + "/vorod.lock") >> daemon;
    kill(voro.process(), SIGTERM);
    voro.finish();
    if (daemon > 0) {
        kill(daemon, SIGTERM);
        bench::waitForEnd({daemon}, 5'000);
    }
    return heard == 0 ? 0 : heard - asked;
}

int64_t playColdPeer(bench::SoundWatch &watch, const std::string &path)
{
    watch.arm();
    const int64_t asked = bench::now();
    bench::PeerProcess peer("mpv");
    peer.play(path);
    const int64_t heard = watch.soundTime();
    return heard == 0 ? 0 : heard - asked;
}

void measureCold(bench::SoundWatch &watch, const std::string &folder, int runs)
{
    Figures ours;
    Figures peer;
    const std::string path = folder + "/a.ogg";
    for (int i = -1; i < runs; ++i) {
        const int64_t time = playCold(watch, path);
        const int64_t peerTime = playColdPeer(watch, path);
        if (i >= 0 && time != 0) {
            ours.add(static_cast<double>(time));
        }
        if (i >= 0 && peerTime != 0) {
            peer.add(static_cast<double>(peerTime));
        }
    }
    bench::printRow("without a daemon: start of voro play to first sound, ogg", bench::milliseconds(ours.median()),
                    bench::milliseconds(peer.median()) + " (mpv)", "≤ 1.5 ×");
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 3) {
        return 2;
    }
    const std::string folder = argv[1];
    const int runs = std::atoi(argv[2]);
    bench::silenceLibrary();
    bench::SoundWatch watch;
    bench::printHead("First sound where it is not as usual, medians of " + std::to_string(runs));
    measureLimit(watch, folder, runs);
    measureRested(watch, folder, runs);
    measureCrashed(watch, folder, runs);
    measureCold(watch, folder, runs);
}
