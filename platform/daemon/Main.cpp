#include "Background.h"
#include "Circumstances.h"
#include "Guardian.h"
#include "Options.h"
#include "ServiceManager.h"
#include "SignalEvent.h"
#include "Socket.h"
#include "Upgrade.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QSocketNotifier>
#include <QtCore/QTimer>

#include <pps/broker/Broker.h>
#include <pps/Runtime.h>
#include <renderer/service/RendererService.h>
#include <services/common/Paths.h>
#include <services/common/SharedControl.h>
#include <services/mediakeys/MediaKeyService.h>
#include <services/nowplaying/NowPlayingService.h>
#include <services/sound/SoundService.h>
#include <sys/resource.h>

#include <csignal>
#include <cstdio>
#include <filesystem>

namespace {

void raiseDescriptorLimit()
{
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) == 0) {
        limit.rlim_cur = limit.rlim_max;
        setrlimit(RLIMIT_NOFILE, &limit);
    }
}

int complain(const std::string &problem, int status)
{
    std::fprintf(stderr, "vorod: %s\n", problem.c_str());
    return status;
}

int serve(int argc, char **argv, const std::string &folder, voro::Socket &socket, voro::Background &background,
          int idleExit)
{
    // It comes to whoever holds a lease on a file that somebody opens.
    std::signal(SIGIO, SIG_IGN);
    QCoreApplication application(argc, argv);
    voro::pps::Broker broker;
    QSocketNotifier brokerReady(broker.fd(), QSocketNotifier::Read);
    QObject::connect(&brokerReady, &QSocketNotifier::activated, [&broker] { broker.process(); });

    // The services. They are all there before anybody can connect.
    voro::renderer::RendererService renderer(broker);
    if (!renderer.listen(folder)) {
        std::perror("vorod: pictures are shown in windows only");
    }
    voro::nowplaying::NowPlayingService nowPlaying(broker);
    voro::mediakeys::MediaKeyService mediaKeys(broker);
    mediaKeys.setCommand([&nowPlaying](std::string_view message) { nowPlaying.command(message); });
    voro::SharedControl playerControl(broker, std::string(voro::MediaPlayerControl));
    playerControl.add(nowPlaying.connections());
    playerControl.add(mediaKeys);
    const voro::sound::SoundService sound(broker);

    broker.reserve("/pps/services/multimedia");
    broker.listen(socket.release());

    QSocketNotifier stop(voro::signalEvent({SIGTERM, SIGINT}), QSocketNotifier::Read);
    QObject::connect(&stop, &QSocketNotifier::activated, &application, &QCoreApplication::quit);
    // A newer daemon takes over when no player is in its way.
    const auto makeRoom = [&renderer] {
        const auto end = [&renderer] {
            if (renderer.isIdle()) {
                QCoreApplication::quit();
            }
        };
        renderer.onIdle(end);
        end();
    };
    QSocketNotifier wanted(voro::signalEvent({SIGUSR1}), QSocketNotifier::Read);
    QObject::connect(&wanted, &QSocketNotifier::activated, [&] {
        wanted.setEnabled(false);
        makeRoom();
    });
    const voro::Upgrade upgrade(makeRoom);
    QTimer idle;
    idle.setSingleShot(true);
    QObject::connect(&idle, &QTimer::timeout, &application, &QCoreApplication::quit);
    if (idleExit >= 0) {
        idle.start(idleExit * 1000);
        broker.onClientCountChanged([&] {
            if (broker.clientCount() == 0) {
                idle.start(idleExit * 1000);
            } else {
                idle.stop();
            }
        });
    }
    socket.announce();
    background.ready();
    const int status = QCoreApplication::exec();
    // Applications take an end in order as any other one: they get what was left to them, and come back when they want
    // something.
    broker.leave();
    return status;
}

} // namespace

int main(int argc, char **argv)
{
    std::string problem;
    const auto options = voro::parseOptions({argv + 1, argv + argc}, problem);
    if (!options) {
        return complain(problem + "\nTry: vorod --help", 2);
    }
    if (options->help) {
        std::fputs(voro::HelpText, stdout);
        return 0;
    }
    if (options->version) {
        std::puts("vorod " VORO_VERSION);
        return 0;
    }
    std::string folder;
    if (const int error = voro::pps::runtimeFolder(folder)) {
        return complain(voro::pps::runtimeProblem(folder, error), 1);
    }
    voro::Background background;
    if (options->background) {
        if (voro::startByManager(std::filesystem::read_symlink("/proc/self/exe"), folder)) {
            return 0;
        }
        voro::forgetStarter();
        background.enter();
    }
    voro::Socket socket;
    voro::guard(options->background);
    switch (socket.open(folder, !options->background, problem)) {
    case voro::Socket::Outcome::Open:
        break;
    case voro::Socket::Outcome::AlreadyRunning:
        return options->background ? 0 : complain(problem, 1);
    case voro::Socket::Outcome::Failed:
        return complain(problem, 1);
    }
    if (!options->background) {
        std::fprintf(stderr,
                     "vorod " VORO_VERSION " serves multimedia in %s until it is stopped; applications start it by "
                     "themselves\n",
                     folder.c_str());
    }
    raiseDescriptorLimit();
    return serve(argc, argv, folder, socket, background, options->idleExit);
}
