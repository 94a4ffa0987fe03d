/*
 * From play() of a prepared system sound to its first sound at the null sink's monitor, beside the same sound by
 * QSoundEffect, which has loaded it as well, and by canberra-gtk-play. Arguments: the theme's name of the sound, its
 * file as WAV, the number of runs.
 */

#include "Figures.h"
#include "Processes.h"
#include "SoundWatch.h"

#include <multimedia/SystemSound.h>

#include <QtCore/QCoreApplication>

#include <cstdlib>
#include <string>

using voro::multimedia::SystemSound;

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 4) {
        return 2;
    }
    const std::string event = argv[1];
    const int runs = std::atoi(argv[3]);
    bench::SoundWatch watch;
    SystemSound sound(SystemSound::GeneralNotification);
    bench::Child effect({QCoreApplication::applicationDirPath().toStdString() + "/peer_qsoundeffect", argv[2]});
    if (effect.line() != "ready") {
        return 1;
    }

    bench::Figures ours;
    bench::Figures effects;
    bench::Figures themes;
    // The first run warms up.
    for (int i = -1; i < runs; ++i) {
        const auto add = [&](bench::Figures &figures, int64_t asked) {
            if (const int64_t heard = watch.soundTime(); i >= 0 && heard > 0) {
                figures.add(static_cast<double>(heard - asked));
            }
        };
        watch.arm();
        const int64_t asked = bench::now();
        sound.play();
        add(ours, asked);
        watch.arm();
        effect.send("play");
        add(effects, std::stoll(effect.line()));
        watch.arm();
        const int64_t started = bench::now();
        bench::Child player({"canberra-gtk-play", "--id=" + event});
        add(themes, started);
    }
    bench::printHead("System sounds, medians of " + std::to_string(runs));
    bench::printRow("play() of a prepared sound to first sound at the monitor", bench::milliseconds(ours.median()),
                    bench::milliseconds(effects.median()) + " (QSoundEffect), " + bench::milliseconds(themes.median())
                        + " (canberra-gtk-play)",
                    "≤ both");
}
