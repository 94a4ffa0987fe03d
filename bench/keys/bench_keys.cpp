/*
 * From a key's release at its device to shortPress() in the application, beside the same event in a program that reads
 * the device itself. Argument: the number of runs.
 */

#include "FakeDevice.h"
#include "Figures.h"
#include "Processes.h"

#include <multimedia/MediaKeyWatcher.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>

#include <cstdlib>
#include <string>

using namespace voro::multimedia;

namespace {

/** Presses a key shortly; the time when it was released. */
int64_t tap(FakeDevice &device)
{
    const int64_t released = bench::now();
    const auto now = FakeDevice::Time::clock::now();
    device.sendPress(KEY_PLAY, now, now);
    return released;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 2) {
        return 2;
    }
    const int runs = std::atoi(argv[1]);
    const QTemporaryDir folder;
    qputenv("VORO_RUNTIME_DIR", folder.path().toLocal8Bit());
    const QString devices = folder.filePath("input");
    QDir().mkdir(devices);
    FakeDevice device(devices + "/event0");
    FakeDevice peerDevice(folder.filePath("peer"));

    const std::string programs = QCoreApplication::applicationDirPath().toStdString();
    bench::Child service({programs + "/bench_key_service", folder.path().toStdString(), devices.toStdString()});
    bench::Child peer({programs + "/peer_evdev", folder.filePath("peer").toStdString()});
    if (service.line() != "ready" || peer.line() != "ready") {
        return 1;
    }

    MediaKeyWatcher watcher(MediaKey::Play);
    int64_t reported = 0;
    QObject::connect(&watcher, &MediaKeyWatcher::shortPress, [&] {
        reported = bench::now();
        QCoreApplication::quit();
    });
    bench::Figures ours;
    bench::Figures peers;
    // The first run warms up.
    for (int i = -1; i < runs; ++i) {
        const int64_t released = tap(device);
        QCoreApplication::exec();
        const int64_t peerReleased = tap(peerDevice);
        const int64_t peerReported = std::stoll(peer.line());
        if (i >= 0) {
            ours.add(static_cast<double>(reported - released));
            peers.add(static_cast<double>(peerReported - peerReleased));
        }
    }
    bench::printHead("Media keys, medians of " + std::to_string(runs));
    bench::printRow("release at the device to shortPress()", bench::text(ours.median() / 1000, 1, " µs"),
                    bench::text(peers.median() / 1000, 1, " µs (libevdev in the application)"), "≤ peer + 100 µs");
}
