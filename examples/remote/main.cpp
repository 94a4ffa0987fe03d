#include "Application.h"

int main(int argc, char *argv[])
{
    return application::run(argc, argv,
                            {.id = QStringLiteral("voro-remote"),
                             .name = QStringLiteral("Voro Remote"),
                             .summary = QStringLiteral("Shows and commands what is playing on this device."),
                             .operands = {},
                             .uri = QStringLiteral("voro.remote")});
}
