/*
 * Whether thousands of operations leave anything behind. Argument: a folder with a.EXT and minute.mp3;
 * VORO_BENCH_DAEMON names the daemon's process.
 */

#include "Contestants.h"
#include "Figures.h"
#include "Processes.h"
#include "SoundWatch.h"

#include <multimedia/MediaPlayer.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QUrl>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <random>
#include <string>
#include <vector>

using namespace voro::multimedia;

namespace {

constexpr int Warmup = 100;

struct Everything {
    bench::Usage application = bench::usage(getpid());
    bench::Usage daemon = bench::usage(bench::daemonProcess());
    bench::Usage workers = bench::usage(bench::descendants(bench::daemonProcess()));
};

/** How many processes there are beyond those of living players and of a daemon at rest, when killed ones have ended. */
size_t leftWorkers(size_t players)
{
    for (;;) {
        const auto workers = bench::descendants(bench::daemonProcess());
        if (workers.size() <= players + bench::Resting || !bench::waitForEnd(workers, 5'000)) {
            const size_t expected = players + bench::Resting;
            return workers.size() <= expected ? 0 : workers.size() - expected;
        }
    }
}

/** Does something a number of times and tells what has grown since the first hundred. */
void endure(const std::string &what, int count, size_t players, const std::function<void(int)> &act)
{
    const auto settle = [players] {
        QCoreApplication::processEvents();
        const size_t left = leftWorkers(players);
        bench::waitForCalm(bench::daemonProcess());
        return left;
    };
    for (int i = 0; i < Warmup; ++i) {
        act(i);
    }
    settle();
    const Everything before;
    for (int i = Warmup; i < count; ++i) {
        act(i);
    }
    const size_t left = settle();
    const Everything after;

    const auto growth = [&](auto bench::Usage::*value) {
        std::string text;
        for (const auto part : {&Everything::application, &Everything::daemon, &Everything::workers}) {
            text += (text.empty() ? "" : ", ") + std::to_string((after.*part).*value - (before.*part).*value);
        }
        return text;
    };
    const std::string name = std::to_string(count) + " " + what + ": ";
    bench::printRow(name + "growth of application, daemon, workers", growth(&bench::Usage::anonymous) + " kB", "–",
                    "flat");
    bench::printRow(name + "descriptors of application, daemon, workers; processes",
                    growth(&bench::Usage::descriptors) + "; " + std::to_string(left), "–", "0, 0, 0; 0");
}

class Endurance {
public:
    explicit Endurance(const std::string &folder) : m_folder(folder) {}

    void run()
    {
        endure("players made and destroyed", 1000, 0, [](int) { MediaPlayer(); });
        endure("players made, prepared and destroyed", 1000, 0, [this](int) {
            MediaPlayer player;
            load(player, 1);
        });
        endureWithPlayer("plays of alternating media", 1000, [this](MediaPlayer &player, int i) { play(player, i); });
        endureWithPlayer("loads and stops of alternating media", 10'000, [this](MediaPlayer &player, int i) {
            load(player, i);
            bench::must(player.stop());
        });
        seek();
        confuse();
    }

private:
    void load(MediaPlayer &player, int i) const
    {
        setSource(player, i);
        bench::must(player.prepare());
    }

    void setSource(MediaPlayer &player, int i) const
    {
        static const std::vector<std::string> names = {"/a.wav", "/a.ogg", "/a.mp3", "/a.mp4"};
        const std::string path = m_folder + names[static_cast<size_t>(i) % names.size()];
        bench::must(player.setSourceUrl(QUrl::fromLocalFile(QString::fromStdString(path))));
    }

    void play(MediaPlayer &player, int i)
    {
        setSource(player, i);
        m_watch.forget();
        bench::must(player.play());
        if (m_watch.streamTime() == 0) {
            fail("a medium did not play");
        }
    }

    /** Every tenth is waited for: of a burst only the last one need be made. */
    void seek()
    {
        std::minstd_rand random;
        bool hasArrived = false;
        unsigned target = 0;
        endureWithPlayer("seeks in mp3", 10'000, [&, this](MediaPlayer &player, int i) {
            if (i == 0) {
                bench::must(player.setSourceUrl(QUrl::fromLocalFile(QString::fromStdString(m_folder + "/minute.mp3"))));
                bench::must(player.setStatusInterval(20));
                bench::must(player.play());
                QObject::connect(&player, qOverload<unsigned>(&MediaPlayer::positionChanged), &player,
                                 [&](unsigned position) { hasArrived = position > target; });
            }
            target = random() % 60'000;
            hasArrived = false;
            bench::must(player.seekTime(target));
            const int64_t limit = bench::now() + 10'000'000'000;
            while (i % 10 == 9 && !hasArrived && bench::now() < limit) {
                QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
            }
            if (i % 10 == 9 && !hasArrived) {
                fail("a seek did not arrive");
            }
        });
    }

    /** Whatever comes; now and then the player has to play all the same. */
    void confuse()
    {
        std::minstd_rand random;
        const auto any = [&random](unsigned count) { return static_cast<int>(random() % count); };
        const std::vector<std::function<void(MediaPlayer &)>> commands = {
            [&, this](MediaPlayer &player) { setSource(player, any(4)); },
            [](MediaPlayer &player) { player.prepare(); },
            [](MediaPlayer &player) { player.play(); },
            [](MediaPlayer &player) { player.play(); },
            [](MediaPlayer &player) { player.pause(); },
            [](MediaPlayer &player) { player.stop(); },
            [](MediaPlayer &player) { player.reset(); },
            [&](MediaPlayer &player) { player.seekPercent(any(100) / 100.0); },
            [&](MediaPlayer &player) { player.setSpeed((any(16) + 1) / 4.0); },
            [&](MediaPlayer &player) { player.setRepeatMode(static_cast<RepeatMode::Type>(any(3))); },
            [&](MediaPlayer &player) { player.setEqualizerPreset(static_cast<EqualizerPreset::Type>(any(17))); },
        };
        endureWithPlayer("random commands", 10'000, [&, this](MediaPlayer &player, int i) {
            if (i % 20 < 19) {
                commands[static_cast<size_t>(any(static_cast<unsigned>(commands.size())))](player);
            } else {
                bench::must(player.reset());
                play(player, i);
            }
        });
    }

    static void endureWithPlayer(const std::string &what, int count, const std::function<void(MediaPlayer &, int)> &act)
    {
        MediaPlayer player;
        endure(what, count, 1, [&](int i) {
            act(player, i);
            QCoreApplication::processEvents();
        });
    }

    [[noreturn]] static void fail(const char *what)
    {
        std::fprintf(stderr, "%s\n", what);
        std::exit(1);
    }

    std::string m_folder;
    bench::SoundWatch m_watch;
};

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 2) {
        return 2;
    }
    bench::silenceLibrary();
    bench::printHead("What is left behind, after the first hundred");
    Endurance(argv[1]).run();
}
