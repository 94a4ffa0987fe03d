/*
 * What a listener waits for: from play() on a new medium to the stream at the sound server and to the first sound at
 * the null sink's monitor, and from a seek to the first sound from there. Arguments: a folder with a.EXT, b.EXT and
 * seek.EXT (a tone until 0.5 s, silence until 15 s, then a tone), the number of runs.
 */

#include "Contestants.h"
#include "Figures.h"
#include "SoundWatch.h"

#include <multimedia/MediaPlayer.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QUrl>

#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

using namespace voro::multimedia;

namespace {

constexpr int InSilence = 3'000;
constexpr int InTone = 20'000;

struct Entry {
    std::unique_ptr<bench::Contestant> contestant;
    bench::Figures stream = {};
    bench::Figures sound = {};
    /** How often nothing was heard. */
    int silences = 0;

    /** False when nothing came in time; then the contestant is made anew. */
    bool add(bench::Figures Entry::*figures, int64_t asked, int64_t time, bool isWarm)
    {
        if (time == 0) {
            ++silences;
            contestant->renew();
        } else if (isWarm) {
            (this->*figures).add(static_cast<double>(time - asked));
        }
        return time != 0;
    }
};
/** Ours is the first. */
using Entries = std::vector<Entry>;

Entries contestants(bool withCold)
{
    using bench::PeerProcess;
    Entries entries;
    entries.push_back({.contestant = std::make_unique<bench::Ours>()});
    for (const char *name : {"qmediaplayer", "mpv"}) {
        entries.push_back({.contestant = std::make_unique<PeerProcess>(name)});
    }
    if (withCold) {
        entries.push_back({.contestant = std::make_unique<PeerProcess>("playbin3", PeerProcess::Kept::Cold)});
    }
    return entries;
}

std::string figure(const Entry &entry, bench::Figures Entry::*figures)
{
    const std::string time = bench::milliseconds((entry.*figures).median());
    return entry.silences == 0 ? time : time + ", nothing heard " + std::to_string(entry.silences) + " times";
}

void printRow(const std::string &what, const Entries &entries, bench::Figures Entry::*figures,
              const std::string &wanted)
{
    std::string peers;
    for (size_t i = 1; i < entries.size(); ++i) {
        peers += (i > 1 ? ", " : "") + figure(entries[i], figures) + " (" + entries[i].contestant->name() + ")";
    }
    bench::printRow(what, figure(entries[0], figures), peers, wanted);
}

void measurePlay(bench::SoundWatch &watch, const std::string &folder, const std::string &extension, int runs)
{
    Entries entries = contestants(true);
    // The first run warms up what is warm.
    for (int i = -1; i < runs; ++i) {
        for (Entry &entry : entries) {
            watch.arm();
            const int64_t asked = entry.contestant->play(folder + (i % 2 ? "/b." : "/a.") + extension);
            if (entry.add(&Entry::sound, asked, watch.soundTime(), i >= 0)) {
                entry.add(&Entry::stream, asked, watch.streamTime(), i >= 0);
                entry.contestant->stop();
            }
        }
    }
    const bool isQuick = extension == "wav" || extension == "ogg";
    printRow("play() to stream at the sound server, " + extension, entries, &Entry::stream,
             std::string("≤ ") + (isQuick ? "0.9" : "0.7") + " × the faster warm peer");
    printRow("play() to first sound at the monitor, " + extension, entries, &Entry::sound, "≤ the faster peer");
}

/** Plays on in silence. */
void beginSeeking(bench::SoundWatch &watch, bench::Contestant &contestant, const std::string &path)
{
    watch.arm();
    contestant.play(path);
    watch.soundTime();
}

void measureSeek(bench::SoundWatch &watch, const std::string &folder, const std::string &extension, int runs)
{
    Entries entries = contestants(false);
    const std::string path = folder + "/seek." + extension;
    for (Entry &entry : entries) {
        beginSeeking(watch, *entry.contestant, path);
        for (int i = -1; i < runs; ++i) {
            watch.arm();
            const int64_t asked = entry.contestant->seek(InTone);
            if (entry.add(&Entry::sound, asked, watch.soundTime(), i >= 0)) {
                entry.contestant->seek(InSilence);
            } else {
                beginSeeking(watch, *entry.contestant, path);
            }
            QCoreApplication::processEvents();
        }
        entry.contestant->stop();
    }
    printRow("seek while playing to first sound from there, " + extension, entries, &Entry::sound, "≤ the faster peer");
}

/** A list is prepared when its first track is. */
void measureLongList(const std::string &folder, int runs)
{
    constexpr int Tracks = 10'000;
    const std::string path = folder + "/long.m3u";
    std::ofstream list(path);
    for (int i = 0; i < Tracks; ++i) {
        list << "a.ogg\n";
    }
    list.close();
    bench::Figures times;
    for (int i = 0; i < runs; ++i) {
        MediaPlayer player;
        bench::must(player.setSourceUrl(QUrl::fromLocalFile(QString::fromStdString(path))));
        const int64_t asked = bench::now();
        bench::must(player.prepare());
        times.add(static_cast<double>(bench::now() - asked));
    }
    bench::printRow("prepare() of a playlist of 10000", bench::milliseconds(times.median()), "–", "< 1 s");
}

/** One after the other, as fast as they come: each needs a worker, and the daemon has one spare. */
void measureManyPlayers(const std::string &folder)
{
    constexpr int Players = 400;
    const QUrl medium = QUrl::fromLocalFile(QString::fromStdString(folder + "/a.ogg"));
    const int64_t began = bench::now();
    for (int i = 0; i < Players; ++i) {
        MediaPlayer player;
        bench::must(player.setSourceUrl(medium));
        bench::must(player.prepare());
    }
    const double each = static_cast<double>(bench::now() - began) / Players;
    bench::printRow("prepare() to prepare() of 400 players, ogg", bench::milliseconds(each), "–", "≤ 5 ms");
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

    bench::SoundWatch watch;
    bench::printHead("What a listener waits for, medians of " + std::to_string(runs));
    for (const std::string extension : {"wav", "ogg", "mp3", "mp4"}) {
        measurePlay(watch, folder, extension, runs);
    }
    for (const std::string extension : {"wav", "ogg", "mp3", "mp4"}) {
        measureSeek(watch, folder, extension, runs);
    }
    measureManyPlayers(folder);
    measureLongList(folder, runs);
}
