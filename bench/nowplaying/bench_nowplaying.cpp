/*
 * What the now-playing role costs: from setMetaData() to a controller in another process beside a player and a
 * listener on the session bus, from a command to the application beside playerctl, and a crowd of controllers.
 * Arguments: the number of runs, the seconds for which the crowd is kept busy; VORO_BENCH_DAEMON names the daemon's
 * process.
 */

#include "Contestants.h"
#include "Figures.h"
#include "Processes.h"

#include <multimedia/MetaData.h>
#include <multimedia/NowPlayingController.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>
#include <QtCore/QProcess>
#include <QtCore/QTimer>
#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusConnection>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

using namespace voro::multimedia;

namespace {

constexpr int WarmUp = 5;
constexpr int CrowdSize = 200;
constexpr int Period = 100;
constexpr int Patience = 10'000;

[[noreturn]] void giveUp(const char *reason)
{
    std::fprintf(stderr, "%s\n", reason);
    std::exit(1);
}

/** A program that is now playing. */
class SourceProcess {
public:
    explicit SourceProcess(const char *name) : m_child({bench::program(name)})
    {
        if (m_child.line() != "ready") {
            giveUp("a source does not start");
        }
    }
    void send(const std::string &line) { m_child.send(line); }
    /** The time that it tells next. */
    int64_t time()
    {
        const std::string line = m_child.line();
        if (line.empty()) {
            giveUp("a source has ended");
        }
        return std::stoll(line);
    }

private:
    bench::Child m_child;
};

/** Where titles arrive, in the event loop. */
class Arrivals {
public:
    /** Waits for the title and returns the time when it arrived. */
    int64_t waitFor(const QString &title)
    {
        m_wanted = title;
        m_time = 0;
        QTimer::singleShot(Patience, &m_loop, [this] { m_loop.exit(1); });
        if (m_time == 0 && m_loop.exec() != 0) {
            giveUp("a title does not arrive");
        }
        return m_time;
    }
    void arrived(const QString &title)
    {
        const int64_t time = bench::now();
        if (title == m_wanted) {
            m_time = time;
            m_loop.exit();
        }
    }

private:
    QString m_wanted;
    int64_t m_time = 0;
    QEventLoop m_loop;
};

double measureMetaData(SourceProcess &source, Arrivals &arrivals, int runs)
{
    bench::Figures figures;
    for (int i = -WarmUp; i < runs; ++i) {
        const QString title = QStringLiteral("Title %1").arg(i);
        source.send("publish " + title.toStdString());
        const int64_t arrived = arrivals.waitFor(title);
        const int64_t asked = source.time();
        if (i >= 0) {
            figures.add(static_cast<double>(arrived - asked));
        }
    }
    return figures.median();
}

double measureCommand(SourceProcess &source, const std::function<void()> &command, int runs)
{
    bench::Figures figures;
    for (int i = -WarmUp; i < runs; ++i) {
        const int64_t begin = bench::now();
        command();
        const int64_t came = source.time();
        if (i >= 0) {
            figures.add(static_cast<double>(came - begin));
        }
    }
    return figures.median();
}

class BusListener : public QObject {
    Q_OBJECT
public:
    Arrivals arrivals;
public Q_SLOTS:
    void changed(const QString &, const QVariantMap &changes, const QStringList &)
    {
        const auto metaData = qdbus_cast<QVariantMap>(changes.value(QStringLiteral("Metadata")));
        arrivals.arrived(metaData.value(QStringLiteral("xesam:title")).toString());
    }
};

struct Times {
    double metaData;
    double command;
};

Times measureOurs(int runs)
{
    SourceProcess source("source_voro");
    NowPlayingController controller;
    Arrivals arrivals;
    QObject::connect(&controller, &NowPlayingController::metaDataChanged, [&arrivals](const QVariantMap &metaData) {
        arrivals.arrived(metaData.value(MetaData::Title).toString());
    });
    const double metaData = measureMetaData(source, arrivals, runs);
    const auto next = [&controller] {
        if (controller.next() != MediaError::None) {
            giveUp("no service");
        }
    };
    return {metaData, measureCommand(source, next, runs)};
}

Times measurePeer(int runs)
{
    QProcess bus;
    bus.start(QStringLiteral("dbus-daemon"),
              {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
    if (!bus.waitForReadyRead()) {
        giveUp("no session bus");
    }
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.readLine().trimmed());
    Times times{};
    {
        SourceProcess source("source_mpris");
        BusListener listener;
        QDBusConnection::sessionBus().connect(
            QString(), QStringLiteral("/org/mpris/MediaPlayer2"), QStringLiteral("org.freedesktop.DBus.Properties"),
            QStringLiteral("PropertiesChanged"), &listener, SLOT(changed(QString, QVariantMap, QStringList)));
        times.metaData = measureMetaData(source, listener.arrivals, runs);
        std::unique_ptr<bench::Child> playerctl;
        const auto next = [&playerctl] {
            playerctl = std::make_unique<bench::Child>(std::vector<std::string>{"playerctl", "next"});
        };
        times.command = measureCommand(source, next, runs);
    }
    bus.terminate();
    bus.waitForFinished();
    return times;
}

/** Many controllers that watch a role which changes all the time. */
class Crowd {
public:
    Crowd()
    {
        for (int i = 0; i < CrowdSize; ++i) {
            auto &controller = m_controllers.emplace_back(std::make_unique<NowPlayingController>());
            QObject::connect(controller.get(), &NowPlayingController::metaDataChanged,
                             [this](const QVariantMap &metaData) {
                                 m_informed += metaData.value(MetaData::Title).toString() == m_title;
                                 m_last = bench::now();
                             });
        }
    }

    /** From each change to the last controller that knows of it. */
    bench::Figures run(int changes)
    {
        bench::Figures figures;
        QEventLoop loop;
        QTimer timer;
        int64_t asked = 0;
        QObject::connect(&timer, &QTimer::timeout, [&] {
            if (asked != 0) {
                figures.add(m_informed == CrowdSize ? static_cast<double>(m_last - asked) : 1e6 * Period);
            }
            if (changes-- == 0) {
                loop.quit();
                return;
            }
            m_informed = 0;
            m_title = QStringLiteral("Title %1").arg(++m_number);
            m_source.send("turn " + m_title.toStdString());
            asked = m_source.time();
        });
        timer.start(Period);
        loop.exec();
        return figures;
    }

private:
    SourceProcess m_source{"source_voro"};
    std::vector<std::unique_ptr<NowPlayingController>> m_controllers;
    QString m_title;
    int m_number = 0;
    int m_informed = 0;
    int64_t m_last = 0;
};

std::string kilobytes(long value)
{
    return std::to_string(value) + " kB";
}

void measureCrowd(const std::string &what, int seconds)
{
    constexpr int ChangesPerSecond = 1000 / Period;
    Crowd crowd;
    crowd.run(5 * ChangesPerSecond);
    const pid_t daemon = bench::daemonProcess();
    const long daemonBefore = bench::usage(daemon).anonymous;
    const long ownBefore = bench::usage(getpid()).anonymous;
    const bench::Figures figures = crowd.run(seconds * ChangesPerSecond);
    const long daemonGrowth = bench::usage(daemon).anonymous - daemonBefore;
    const long ownGrowth = bench::usage(getpid()).anonymous - ownBefore;
    bench::printRow(what + ": a change to the last of them, median", bench::milliseconds(figures.median()), "–", "");
    bench::printRow(what + ": the same, at worst", bench::milliseconds(figures.quantile(1)), "–", "≤ 50 ms");
    bench::printRow(what + ": memory that daemon and controllers grow by",
                    kilobytes(daemonGrowth) + " and " + kilobytes(ownGrowth), "–", "flat");
}

/** Subscribes, and then reads nothing until its input ends. */
int sleepOverMessages()
{
    NowPlayingController controller;
    QObject::connect(&controller, &NowPlayingController::metaDataChanged, [] {});
    std::cout << "ready" << std::endl;
    std::string line;
    std::getline(std::cin, line);
    return 0;
}

std::string microseconds(double nanoseconds)
{
    return bench::text(nanoseconds / 1e3, 0, " µs");
}

std::string ratio(double wanted)
{
    return "≤ " + bench::text(wanted, 1, "") + " ×";
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc == 2 && std::string(argv[1]) == "sleep") {
        return sleepOverMessages();
    }
    if (argc != 3) {
        return 2;
    }
    const int runs = std::atoi(argv[1]);
    const int seconds = std::atoi(argv[2]);

    bench::printHead("What is now playing, medians of " + std::to_string(runs));
    const Times ours = measureOurs(runs);
    const Times peer = measurePeer(runs);
    bench::printRow("setMetaData() to a controller's metaDataChanged()", microseconds(ours.metaData),
                    microseconds(peer.metaData) + " (PropertiesChanged)", ratio(0.6));
    bench::printRow("a controller's next() to the connection's next()", microseconds(ours.command),
                    microseconds(peer.command) + " (playerctl next)", ratio(0.5));
    const std::string crowd =
        std::to_string(CrowdSize) + " controllers, ten changes a second for " + std::to_string(seconds) + " s";
    measureCrowd(crowd, seconds);
    bench::Child sleeper({bench::program("bench_nowplaying"), "sleep"});
    sleeper.line();
    measureCrowd("the same and one that never reads", seconds);
}

#include "bench_nowplaying.moc"
