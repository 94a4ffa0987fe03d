#include "Commands.h"
#include "Confinement.h"
#include "Setup.h"

#include <cstdio>
#include <string_view>

int main(int argc, char **argv)
{
    using namespace voro::renderer;
    if (argc > 1) {
        const bool isVersion = std::string_view(argv[1]) == "--version";
        std::fprintf(isVersion ? stdout : stderr, isVersion
                                                      ? "voro-renderer " VORO_VERSION "\n"
                                                      : "voro-renderer is started by vorod and takes no arguments\n");
        return isVersion ? 0 : 2;
    }
    restrictProcess();
    startGStreamer();
    confineProcess();
    warmUp();
    Commands commands;
    if (!commands.start()) {
        std::fprintf(stderr, "voro-renderer is started by vorod\n");
        return 1;
    }
    g_main_loop_run(g_main_loop_new(nullptr, FALSE));
    return 0;
}
