#include "Figures.h"

#include <voro/PpsObject.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>
#include <QtCore/QJsonDocument>
#include <QtCore/QProcess>
#include <QtCore/QSocketNotifier>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>

#include <malloc.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <functional>

using namespace voro;

namespace {

constexpr int Rounds = 5000;
constexpr int WarmUp = 500;

QVariantMap statusMessage()
{
    return {{QStringLiteral("bufferlevel"), QStringLiteral("15000/16000")},
            {QStringLiteral("bufferstatus"), QStringLiteral("playing")},
            {QStringLiteral("md_title_album"), QStringLiteral("An Album")},
            {QStringLiteral("md_title_artist"), QStringLiteral("Some Artist")},
            {QStringLiteral("md_title_bitrate"), 320000},
            {QStringLiteral("md_title_duration"), 234567},
            {QStringLiteral("md_title_genre"), QStringLiteral("Pop")},
            {QStringLiteral("md_title_name"), QStringLiteral("Some Title")},
            {QStringLiteral("md_title_seekable"), true},
            {QStringLiteral("md_title_track"), QStringLiteral("7")},
            {QStringLiteral("position"), 123456},
            {QStringLiteral("volume"), QStringLiteral("50/100")}};
}

/** Sends again and again, each time when the last one has arrived in the event loop. */
class Ping {
public:
    explicit Ping(std::function<void()> send) : m_send(std::move(send)) {}

    void arrived()
    {
        m_figures.add(static_cast<double>(bench::now() - m_begin));
        m_loop.quit();
    }
    /** The median time from sending to the slot. */
    double run()
    {
        for (int i = 0; i < WarmUp + Rounds; ++i) {
            if (i == WarmUp) {
                m_figures = {};
            }
            m_begin = bench::now();
            m_send();
            m_loop.exec();
        }
        return m_figures.median();
    }

private:
    std::function<void()> m_send;
    QEventLoop m_loop;
    bench::Figures m_figures;
    int64_t m_begin = 0;
};

double measurePps()
{
    PpsObject publisher(QStringLiteral("/pps/bench/status"));
    PpsObject subscriber(QStringLiteral("/pps/bench/.all"));
    if (!publisher.open(PpsOpenMode::Publish) || !subscriber.open(PpsOpenMode::Subscribe)) {
        qFatal("no broker: %s", qPrintable(publisher.errorString()));
    }
    Ping ping([&] { publisher.write(PpsObject::encode(statusMessage())); });
    QObject::connect(&subscriber, &PpsObject::readyRead, [&] {
        if (PpsObject::decode(subscriber.read()).value(QStringLiteral("@status")).toMap().size() != 12) {
            qFatal("an incomplete message");
        }
        ping.arrived();
    });
    return ping.run();
}

// The least that a way through a third process can cost.
double measureTwoHops()
{
    int in[2];
    int out[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET, 0, in) != 0 || socketpair(AF_UNIX, SOCK_SEQPACKET, 0, out) != 0) {
        qFatal("no sockets");
    }
    const QByteArray text = PpsObject::encode(statusMessage());
    const pid_t relay = fork();
    if (relay == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        char buffer[65536];
        for (;;) {
            const ssize_t size = read(in[1], buffer, sizeof buffer);
            if (size <= 0 || write(out[0], buffer, static_cast<size_t>(size)) != size) {
                _exit(0);
            }
        }
    }
    Ping ping([&] {
        if (write(in[0], text.constData(), static_cast<size_t>(text.size())) != text.size()) {
            qFatal("the relay is gone");
        }
    });
    QSocketNotifier notifier(out[1], QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, [&] {
        char buffer[65536];
        if (read(out[1], buffer, sizeof buffer) == text.size()) {
            ping.arrived();
        }
    });
    const double median = ping.run();
    kill(relay, SIGKILL);
    return median;
}

class Receiver : public QObject {
    Q_OBJECT
public:
    std::function<void()> onStatus;
public Q_SLOTS:
    void status(const QVariantMap &map)
    {
        if (map.size() == 12) {
            onStatus();
        }
    }
};

// Negative without a bus.
double measureDBus()
{
    QProcess bus;
    bus.start(QStringLiteral("dbus-daemon"),
              {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
    if (!bus.waitForReadyRead()) {
        return -1;
    }
    const QString address = QString::fromLatin1(bus.readLine().trimmed());
    QDBusConnection sender = QDBusConnection::connectToBus(address, QStringLiteral("sender"));
    QDBusConnection receiving = QDBusConnection::connectToBus(address, QStringLiteral("receiver"));
    const QString path = QStringLiteral("/bench");
    const QString interface = QStringLiteral("voro.Bench");
    Receiver receiver;
    receiving.connect(QString(), path, interface, QStringLiteral("status"), &receiver, SLOT(status(QVariantMap)));
    Ping ping([&] {
        QDBusMessage signal = QDBusMessage::createSignal(path, interface, QStringLiteral("status"));
        signal << statusMessage();
        sender.send(signal);
    });
    receiver.onStatus = [&] { ping.arrived(); };
    const double median = ping.run();
    bus.terminate();
    bus.waitForFinished();
    return median;
}

double measureDecoding(const std::function<QVariantMap()> &decode)
{
    bench::Figures figures;
    for (int i = 0; i < 50; ++i) {
        const int64_t begin = bench::now();
        for (int k = 0; k < 2000; ++k) {
            if (decode().isEmpty()) {
                qFatal("nothing decoded");
            }
        }
        figures.add(static_cast<double>(bench::now() - begin) / 2000);
    }
    return figures.median();
}

double heapPerObject()
{
    constexpr int Count = 200;
    std::vector<std::unique_ptr<PpsObject>> objects;
    objects.reserve(Count);
    const size_t before = mallinfo2().uordblks;
    for (int i = 0; i < Count; ++i) {
        objects.push_back(std::make_unique<PpsObject>(QStringLiteral("/pps/bench/object%1").arg(i)));
        objects.back()->open(PpsOpenMode::Subscribe);
    }
    QCoreApplication::processEvents();
    return static_cast<double>(mallinfo2().uordblks - before) / Count;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    bench::printHead("PPS");
    const double pps = measurePps();
    const double hops = measureTwoHops();
    const double dbus = measureDBus();
    bench::printRow("publication to slot, 12 attributes, beside two bare hops", bench::text(pps / 1000, 1, " µs"),
                    bench::text(hops / 1000, 1, " µs"), "");
    if (dbus >= 0) {
        bench::printRow("the same beside a QtDBus signal", bench::text(pps / 1000, 1, " µs"),
                        bench::text(dbus / 1000, 1, " µs"), "less");
    }
    const QByteArray text = "@status\n" + PpsObject::encode(statusMessage());
    const QByteArray json = QJsonDocument::fromVariant(statusMessage()).toJson(QJsonDocument::Compact);
    const double decoding = measureDecoding([&] { return PpsObject::decode(text); });
    const double reading = measureDecoding([&] { return QJsonDocument::fromJson(json).toVariant().toMap(); });
    bench::printRow("decoding that message beside JSON through Qt", bench::text(decoding / 1000, 2, " µs"),
                    bench::text(reading / 1000, 2, " µs"), "less");
    bench::printRow("heap for one watched object", bench::text(heapPerObject(), 0, " bytes"), "", "");
    return 0;
}

#include "bench_pps.moc"
