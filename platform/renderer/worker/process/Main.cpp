#include "Commands.h"
#include "Confinement.h"
#include "HandedFiles.h"
#include "Setup.h"

#include <renderer/common/Protocol.h>
#include <renderer/worker/gst/Graph.h>
#include <sys/socket.h>

#include <cstdio>
#include <string>
#include <string_view>

namespace {

constexpr char What[] =
    "voro-renderer plays and records for the daemon vorod, which starts it; by itself it does nothing\n";

/** Whether there is a daemon at the other end. */
bool isWorker()
{
    int type = 0;
    socklen_t size = sizeof type;
    return getsockopt(voro::renderer::WorkerSocket, SOL_SOCKET, SO_TYPE, &type, &size) == 0 && type == SOCK_SEQPACKET;
}

int answer(std::string_view argument)
{
    if (argument == "--version" || argument == "--help") {
        std::fputs(argument == "--help" ? What : "voro-renderer " VORO_VERSION "\n", stdout);
        return 0;
    }
    std::fprintf(stderr, "voro-renderer: unexpected argument: %s\n", argument.data());
    return 2;
}

} // namespace

int main(int argc, char **argv)
{
    using namespace voro::renderer;
    if (argc > 1) {
        return answer(argv[1]);
    }
    if (!isWorker()) {
        std::fputs(What, stderr);
        return 1;
    }
    restrictProcess();
    Graph::showOnSignal();
    startGStreamer();
    confineProcess();
    warmUp();
    HandedFiles handed;
    setFileOpener([&handed](const std::string &path, Freshness freshness) { return handed.open(path, freshness); });
    Commands commands(handed);
    if (!commands.start()) {
        std::fputs("voro-renderer: the daemon does not answer\n", stderr);
        return 1;
    }
    g_main_loop_run(g_main_loop_new(nullptr, FALSE));
    return 0;
}
