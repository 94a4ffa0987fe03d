/*
 * What video in a QML scene costs, beside QMediaPlayer with VideoOutput. Arguments: two films of 1280 x 720 and of
 * 1920 x 1080, 30 pictures a second, of at least 20 s; the number of runs. Needs a display.
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

/** A film, and what shows it: a program of a few lines, the application Player, or Qt's module. */
struct Show {
    std::string kind;
    std::string film;
    int width;
    int height;
    /** A setting of its process. */
    std::string setting = "QT_QUICK_BACKEND=";
};

struct ProcessorTime {
    double all = 0;
    double workers = 0;
};

struct Figures {
    bench::Figures start;
    bench::Figures frame;
    bench::Figures worker;
    bench::Figures memory;
};

/** What is measured over the application is measured over the daemon and its workers, too, where they do its work. */
ProcessorTime processorTime(const bench::Child &child, bool isOurs)
{
    ProcessorTime sum;
    if (isOurs) {
        for (const pid_t worker : bench::descendants(bench::daemonProcess())) {
            sum.workers += bench::processorTime(worker);
        }
        sum.all = sum.workers + bench::processorTime(bench::daemonProcess());
    }
    sum.all += bench::processorTime(child.process());
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

void measure(Figures &figures, const Show &show, bool isWarm)
{
    const bool isOurs = show.kind != "qt";
    const int64_t begun = bench::now();
    bench::Child child({"env", show.setting, bench::program("show_video"), show.kind, show.film, std::to_string(Before),
                        std::to_string(Before + Measured), std::to_string(show.width), std::to_string(show.height)});
    const int64_t shown = told(child, show.kind);
    told(child, show.kind);
    const ProcessorTime before = processorTime(child, isOurs);
    told(child, show.kind);
    const ProcessorTime after = processorTime(child, isOurs);
    if (isWarm) {
        figures.start.add(static_cast<double>(shown - begun));
        figures.frame.add((after.all - before.all) / Measured * 1e9);
        figures.worker.add((after.workers - before.workers) / Measured * 1e9);
        figures.memory.add(static_cast<double>(bench::usage(child.process()).pss));
    }
    child.finish();
}

std::string peer(const std::string &value)
{
    return value + " (QMediaPlayer, VideoOutput)";
}

void compare(const std::string &film, int width, int height, int runs)
{
    Figures ours;
    Figures shader;
    Figures drawn;
    Figures qts;
    Figures players;
    const bool isFirst = height == 720;
    for (int i = -1; i < runs; ++i) {
        measure(ours, {"ours", film, width, height}, i >= 0);
        measure(qts, {"qt", film, width, height}, i >= 0);
        measure(shader, {"ours", film, width, height, "VORO_VIDEO_SHADER=1"}, i >= 0);
        measure(drawn, {"ours", film, width, height, "QT_QUICK_BACKEND=software"}, i >= 0);
        if (isFirst) {
            measure(players, {"player", film, width, height}, i >= 0);
        }
    }
    bench::printHead("Video in a QML scene, " + std::to_string(width) + " × " + std::to_string(height) + ", medians of "
                     + std::to_string(runs));
    if (isFirst) {
        const std::string start = peer(bench::milliseconds(qts.start.median()));
        bench::printRow("start of the program to its first picture", bench::milliseconds(ours.start.median()), start,
                        "earlier");
        bench::printRow("start of the application Player to its first picture",
                        bench::milliseconds(players.start.median()), start, "earlier");
    }
    bench::printRow("processor time for a picture: application, daemon and workers",
                    bench::milliseconds(ours.frame.median()), peer(bench::milliseconds(qts.frame.median())),
                    isFirst ? "≤ 1.0 ×, ≤ 12 ms" : "≤ 1.0 ×");
    bench::printRow("of it the worker's, which converts colours", bench::milliseconds(ours.worker.median()), "", "");
    bench::printRow("the worker's where a shader converts them", bench::milliseconds(shader.worker.median()), "",
                    "less");
    // The peer does not survive that.
    bench::printRow("processor time for a picture in a scene that Qt draws itself",
                    bench::milliseconds(drawn.frame.median()), "", "");
    const std::string memory = peer(bench::text(qts.memory.median() / 1024, 1, " MB"));
    bench::printRow("memory of the application (PSS)", bench::text(ours.memory.median() / 1024, 1, " MB"), memory,
                    "less by 30 MB");
    if (isFirst) {
        bench::printRow("memory of the application Player (PSS)", bench::text(players.memory.median() / 1024, 1, " MB"),
                        memory, "less by 30 MB");
    }
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 4) {
        return 2;
    }
    compare(argv[1], 1280, 720, std::atoi(argv[3]));
    compare(argv[2], 1920, 1080, std::atoi(argv[3]));
}
