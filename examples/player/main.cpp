#include "Application.h"

int main(int argc, char *argv[])
{
    return application::run(argc, argv,
                            {.program = QStringLiteral("voro-player"),
                             .id = QStringLiteral("org.voro.Player"),
                             .name = QStringLiteral("Voro Player"),
                             .summary = QStringLiteral("Plays music and films from folders, playlists and the net."),
                             .operands = QStringLiteral("[FILE|FOLDER|URL...]"),
                             .uri = QStringLiteral("voro.player")});
}
