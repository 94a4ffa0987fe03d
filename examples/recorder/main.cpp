#include "Application.h"

int main(int argc, char *argv[])
{
    return application::run(argc, argv,
                            {.program = QStringLiteral("voro-recorder"),
                             .id = QStringLiteral("org.voro.Recorder"),
                             .name = QStringLiteral("Voro Recorder"),
                             .summary = QStringLiteral("Records what the microphone hears."),
                             .operands = {},
                             .uri = QStringLiteral("voro.recorder")});
}
