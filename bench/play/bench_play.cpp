/* From play() on a new medium to the stream at the sound server, and to the first sound at the null sink's monitor,
   beside a cold playbin3 in the application's process. Arguments: a folder with a.EXT and b.EXT, the number of runs. */

#include "Figures.h"
#include "Processes.h"
#include "SoundWatch.h"

#include <multimedia/MediaPlayer.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QUrl>

#include <cstdio>
#include <cstdlib>
#include <string>

using namespace voro::multimedia;

namespace {

struct Times {
    bench::Figures stream;
    bench::Figures sound;

    void add(bench::SoundWatch &watch, int64_t asked)
    {
        const int64_t streamTime = watch.streamTime();
        const int64_t soundTime = watch.soundTime();
        if (streamTime == 0 || soundTime == 0) {
            std::fprintf(stderr, "nothing was heard\n");
            std::exit(1);
        }
        stream.add(static_cast<double>(streamTime - asked));
        sound.add(static_cast<double>(soundTime - asked));
    }
};

void must(MediaError::Type result)
{
    if (result == MediaError::None)
        return;
    std::fprintf(stderr, "the player failed: %d\n", int(result));
    std::exit(1);
}

std::string row(const char *what, const std::string &extension)
{
    return std::string(what) + ", " + extension;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 3)
        return 2;
    const std::string folder = argv[1];
    const int runs = std::atoi(argv[2]);
    const std::string peer = QCoreApplication::applicationDirPath().toStdString() + "/peer_playbin3";

    bench::SoundWatch watch;
    bench::printHead("From play() on a new medium, medians of " + std::to_string(runs));
    for (const std::string extension : {"wav", "ogg", "mp3"}) {
        Times ours;
        Times theirs;
        MediaPlayer player;
        // The first one starts the daemon; an application that plays has one.
        for (int i = -1; i < runs; ++i) {
            const std::string path = folder + (i % 2 ? "/b." : "/a.") + extension;
            watch.arm();
            const int64_t asked = bench::now();
            must(player.setSourceUrl(QUrl::fromLocalFile(QString::fromStdString(path))));
            must(player.play());
            if (i >= 0)
                ours.add(watch, asked);
            else
                watch.soundTime();
            must(player.reset());
            QCoreApplication::processEvents();
        }
        for (int i = 0; i < runs; ++i) {
            bench::Child child({peer});
            child.line();
            watch.arm();
            child.send("file://" + folder + (i % 2 ? "/b." : "/a.") + extension);
            theirs.add(watch, std::atoll(child.line().c_str()));
            child.finish();
        }
        bench::printRow(row("play() to stream at the sound server", extension),
                        bench::milliseconds(ours.stream.median()),
                        bench::milliseconds(theirs.stream.median()) + " (playbin3, cold)", "no later");
        bench::printRow(row("play() to first sound at the monitor", extension),
                        bench::milliseconds(ours.sound.median()),
                        bench::milliseconds(theirs.sound.median()) + " (playbin3, cold)", "no later");
    }
}
