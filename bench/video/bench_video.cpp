/*
 * What video in a QML scene costs, beside QMediaPlayer with VideoOutput. Arguments: a film of 1280 x 720, 30 pictures
 * a second, of at least 20 s; the number of runs. Needs a display.
 */

#include "Contestants.h"
#include "Figures.h"
#include "Processes.h"

#include <QtCore/QCoreApplication>

#include <cstdlib>
#include <string>

namespace {

/** What starting costs is not what playing costs: pictures that come before those that are measured. */
constexpr int Before = 30;
constexpr int Measured = 150;

struct Figures {
    bench::Figures start;
    bench::Figures frame;
    bench::Figures memory;
};

/** What is measured over the application is measured over the daemon and its workers, too, where they do its work. */
double processorTime(const bench::Child &child, bool isOurs)
{
    double sum = bench::processorTime(child.process());
    if (isOurs) {
        sum += bench::processorTime(bench::daemonProcess());
        for (const pid_t worker : bench::descendants(bench::daemonProcess())) {
            sum += bench::processorTime(worker);
        }
    }
    return sum;
}

/** The next time that the program tells. */
int64_t told(bench::Child &child, const std::string &kind)
{
    const int64_t time = std::strtoll(child.line().c_str(), nullptr, 10);
    if (time == 0) {
        std::fprintf(stderr, "%s showed nothing\n", kind.c_str());
        std::exit(1);
    }
    return time;
}

void measure(Figures &figures, const std::string &kind, const std::string &film, bool isWarm)
{
    const bool isOurs = kind != "qt";
    const int64_t begun = bench::now();
    bench::Child child(
        {bench::program("show_video"), kind, film, std::to_string(Before), std::to_string(Before + Measured)});
    const int64_t shown = told(child, kind);
    told(child, kind);
    const double before = processorTime(child, isOurs);
    told(child, kind);
    const double used = processorTime(child, isOurs) - before;
    if (isWarm) {
        figures.start.add(static_cast<double>(shown - begun));
        figures.frame.add(used / Measured * 1e9);
        figures.memory.add(static_cast<double>(bench::usage(child.process()).pss));
    }
    child.finish();
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 3) {
        return 2;
    }
    Figures ours;
    Figures players;
    Figures qts;
    for (int i = -1; i < std::atoi(argv[2]); ++i) {
        measure(ours, "ours", argv[1], i >= 0);
        measure(players, "player", argv[1], i >= 0);
        measure(qts, "qt", argv[1], i >= 0);
    }
    bench::printHead(std::string("Video in a QML scene, 1280 × 720, medians of ") + argv[2]);
    const auto peer = [](const std::string &value) { return value + " (QMediaPlayer, VideoOutput)"; };
    bench::printRow("start of the program to its first picture", bench::milliseconds(ours.start.median()),
                    peer(bench::milliseconds(qts.start.median())), "earlier");
    bench::printRow("start of the application Player to its first picture", bench::milliseconds(players.start.median()),
                    peer(bench::milliseconds(qts.start.median())), "earlier");
    bench::printRow("processor time for a picture: application, daemon and workers",
                    bench::milliseconds(ours.frame.median()), peer(bench::milliseconds(qts.frame.median())), "≤ 1.0 ×");
    bench::printRow("memory of the application (PSS)", bench::text(ours.memory.median() / 1024, 1, " MB"),
                    peer(bench::text(qts.memory.median() / 1024, 1, " MB")), "less by 30 MB");
    bench::printRow("memory of the application Player (PSS)", bench::text(players.memory.median() / 1024, 1, " MB"),
                    peer(bench::text(qts.memory.median() / 1024, 1, " MB")), "less by 30 MB");
}
