#include "Application.h"

int main(int argc, char *argv[])
{
    return application::run(argc, argv,
                            {.id = QStringLiteral("voro-recorder"),
                             .name = QStringLiteral("Voro Recorder"),
                             .summary = QStringLiteral("Records what the microphone hears."),
                             .operands = {},
                             .uri = QStringLiteral("voro.recorder")});
}
