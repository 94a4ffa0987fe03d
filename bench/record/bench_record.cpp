/*
 * From record() to the first sample in the file, beside QMediaRecorder and parecord at the same source, and what a
 * minute of Opus costs. Arguments: a folder with minute.wav, which is longer than a minute, the number of runs;
 * VORO_BENCH_DAEMON names the daemon's process.
 */

#include "Figures.h"
#include "Processes.h"
#include "Ruler.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

using namespace std::chrono_literals;

namespace {

std::string programFolder;

/** One that records: a program that is driven by lines. */
class Recorder {
public:
    explicit Recorder(const std::string &program)
        : m_child(std::make_unique<bench::Child>(std::vector<std::string>{programFolder + "/" + program}))
    {
        m_child->line();
    }

    /** The time when it was asked to. */
    int64_t record(const std::string &path) { return ask("record " + path); }
    void stop() { ask("stop"); }
    pid_t process() const { return m_child->process(); }

private:
    int64_t ask(const std::string &line)
    {
        m_child->send(line);
        const std::string answer = m_child->line();
        if (answer.empty()) {
            std::exit(1);
        }
        return std::stoll(answer);
    }

    std::unique_ptr<bench::Child> m_child;
};

std::unique_ptr<bench::Child> startParecord(const std::string &path)
{
    return std::make_unique<bench::Child>(std::vector<std::string>{"parecord", "--device=null.monitor",
                                                                   "--file-format=wav", "--format=s16le",
                                                                   "--rate=48000", "--channels=2", path});
}

void stopParecord(const bench::Child &parecord)
{
    kill(parecord.process(), SIGINT);
    bench::waitForEnd({parecord.process()}, 5000);
}

/** The beginning of a recording as 16-bit stereo. */
std::vector<int16_t> beginOf(const std::string &path)
{
    const std::string command = "ffmpeg -nostdin -loglevel error -i '" + path + "' -f s16le -ac 2 -t 0.1 -";
    FILE *pipe = popen(command.c_str(), "r");
    std::vector<int16_t> samples(9600);
    samples.resize(std::fread(samples.data(), sizeof(int16_t), samples.size(), pipe));
    pclose(pipe);
    return samples;
}

struct Start {
    bench::Figures delay;
    int failures = 0;

    void add(bench::Ruler &ruler, const std::string &path, int64_t asked, bool isWarm)
    {
        const auto first = ruler.timeOf(beginOf(path));
        if (!first) {
            ++failures;
        } else if (isWarm) {
            delay.add(double(*first - asked));
        }
    }
    std::string text() const
    {
        const std::string time = delay.count() > 0 ? bench::milliseconds(delay.median()) : "–";
        return failures == 0 ? time : time + ", not the source's samples " + std::to_string(failures) + " times";
    }
};

void measureStart(bench::Ruler &ruler, const std::string &folder, int runs)
{
    Recorder ours("record_ours");
    Recorder qt("peer_qmediarecorder");
    Start ourStart;
    Start qtStart;
    Start parecordStart;
    // The first run warms up.
    for (int i = -1; i < runs; ++i) {
        const std::string name = folder + "/record" + std::to_string(i);
        for (const auto &[recorder, start, suffix] :
             {std::tuple(&ours, &ourStart, "o.wav"), std::tuple(&qt, &qtStart, "q.wav")}) {
            const int64_t asked = recorder->record(name + suffix);
            ruler.await(700ms);
            recorder->stop();
            start->add(ruler, name + suffix, asked, i >= 0);
        }
        const int64_t asked = bench::now();
        const auto parecord = startParecord(name + "p.wav");
        ruler.await(700ms);
        stopParecord(*parecord);
        parecordStart.add(ruler, name + "p.wav", asked, i >= 0);
    }
    bench::printHead("Recording, medians of " + std::to_string(runs));
    bench::printRow("record() to the source's first sample in the file", ourStart.text(),
                    qtStart.text() + " (QMediaRecorder), " + parecordStart.text() + " (parecord, new process)", "");
}

double processorTime(const std::vector<pid_t> &processes)
{
    double sum = 0;
    for (const pid_t process : processes) {
        sum += bench::processorTime(process);
    }
    return sum;
}

void measureMinute(bench::Ruler &ruler, const std::string &folder)
{
    const bench::Child sound({"paplay", folder + "/minute.wav"});
    Recorder ours("record_ours");
    Recorder qt("peer_qmediarecorder");
    ours.record(folder + "/minute.opus");
    qt.record(folder + "/minute-qt.ogg");
    const auto parecord = startParecord(folder + "/minute-parecord.wav");
    ruler.await(2s);
    const pid_t daemon = bench::daemonProcess();
    std::vector<pid_t> ourProcesses = bench::descendants(daemon);
    ourProcesses.insert(ourProcesses.end(), {daemon, ours.process()});
    const std::array groups = {ourProcesses, std::vector{qt.process()}, std::vector{parecord->process()}};
    std::array<double, 3> before;
    std::array<double, 3> used;
    std::array<long, 3> memory;
    for (size_t i = 0; i < groups.size(); ++i) {
        before[i] = processorTime(groups[i]);
    }
    ruler.await(60s);
    for (size_t i = 0; i < groups.size(); ++i) {
        used[i] = processorTime(groups[i]) - before[i];
        memory[i] = bench::usage(groups[i]).pss;
    }
    const long application = bench::usage(ours.process()).pss;
    ours.stop();
    qt.stop();
    stopParecord(*parecord);

    const auto row = [](const std::string &what, const auto &figures) {
        bench::printRow(what, figures[0], figures[1] + " (QMediaRecorder), " + figures[2] + " (parecord, WAV)", "");
    };
    const auto texts = [](const auto &values, int digits, const char *unit) {
        std::array<std::string, 3> result;
        for (size_t i = 0; i < result.size(); ++i) {
            result[i] = bench::text(static_cast<double>(values[i]), digits, unit);
        }
        return result;
    };
    row("a minute of Opus: processor time of application, daemon and workers", texts(used, 2, " s"));
    row("the same: their memory (PSS)", texts(memory, 0, " kB"));
    bench::printRow("the same: memory of the application", bench::text(static_cast<double>(application), 0, " kB"),
                    "the same", "");
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3) {
        return 2;
    }
    const std::string self = argv[0];
    programFolder = self.substr(0, self.rfind('/'));
    bench::Ruler ruler;
    measureStart(ruler, argv[1], std::atoi(argv[2]));
    measureMinute(ruler, argv[1]);
}
