#include "Application.h"

int main(int argc, char *argv[])
{
    return application::run(argc, argv,
                            {.program = QStringLiteral("voro-remote"),
                             .id = QStringLiteral("org.voro.Remote"),
                             .name = QStringLiteral("Voro Remote"),
                             .summary = QStringLiteral("Shows and commands what is playing on this device."),
                             .operands = {},
                             .uri = QStringLiteral("voro.remote")});
}
