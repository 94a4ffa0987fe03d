#include "Commands.h"
#include "Confinement.h"
#include "HandedFiles.h"
#include "Nursery.h"
#include "Setup.h"
#include "SoundServer.h"

#include <renderer/common/FileRequest.h>
#include <renderer/common/MemoryFile.h>
#include <renderer/common/Protocol.h>
#include <renderer/worker/gst/Graph.h>
#include <renderer/worker/pipeline/PlaybackChooser.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace {

constexpr char What[] =
    "voro-renderer plays and records for the daemon vorod, which starts it; by itself it does nothing\n";

/** Whether there is a daemon at the other end. */
bool isStartedByDaemon()
{
    int type = 0;
    socklen_t size = sizeof type;
    return getsockopt(voro::renderer::WorkerSocket, SOL_SOCKET, SO_TYPE, &type, &size) == 0 && type == SOCK_SEQPACKET;
}

int refuse(std::string_view argument)
{
    if (argument == "--version" || argument == "--help") {
        std::fputs(argument == "--help" ? What : "voro-renderer " VORO_VERSION "\n", stdout);
        return 0;
    }
    std::fprintf(stderr, "voro-renderer: unexpected argument: %s\n", argument.data());
    return 2;
}

int work(voro::renderer::Playback &playback)
{
    using namespace voro::renderer;
    Graph::showOnSignal();
    HandedFiles handed;
    setFileOpener([&handed](const std::string &path, Freshness freshness) { return handed.open(path, freshness); });
    setMemoryMaker([&handed](size_t size) { return handed.makeMemory(size); });
    Commands commands(handed, playback);
    if (!commands.start()) {
        std::fputs("voro-renderer: the daemon does not answer\n", stderr);
        return 1;
    }
    g_main_loop_run(g_main_loop_new(nullptr, FALSE));
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    using namespace voro::renderer;
    bool isNursery = false;
    std::optional<Reach> reach = Reach();
    for (const std::string_view argument : std::span(argv, static_cast<size_t>(argc)).subspan(1)) {
        if (argument == NurseryOption) {
            isNursery = true;
        } else if (argument == NetworkOption) {
            reach->network = true;
        } else if (argument == WindowsOption) {
            reach->windows = true;
        } else {
            return refuse(argument);
        }
    }
    if (!isStartedByDaemon()) {
        std::fputs(What, stderr);
        return 1;
    }
    // Closes all other descriptors of the daemon.
    close_range(WorkerMediaSocket + 1, ~0U, 0);
    restrictProcess();
    nameSoundServer();
    startGStreamer();
    warmUp();
    // Made before processes are forked, it is in memory once.
    PlaybackChooser playback;
    Confinement confinement;
    if (isNursery) {
        reach = Nursery(confinement).run();
    } else {
        confinement.begin();
        if (!reach->network) {
            confinement.leaveNetwork();
        }
    }
    if (!reach) {
        return 1;
    }
    confinement.complete(*reach);
    return work(playback);
}
