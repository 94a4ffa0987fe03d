/*
 * The peer QSoundEffect: plays one file that it has loaded at each line of input, and tells when it was asked to.
 * Argument: the file.
 */

#include "Figures.h"
#include "Lines.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QUrl>
#include <QtMultimedia/QSoundEffect>

#include <iostream>
#include <string>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 2) {
        return 2;
    }
    QSoundEffect effect;
    QObject::connect(&effect, &QSoundEffect::statusChanged, [&] {
        if (effect.status() == QSoundEffect::Ready) {
            bench::tellReady();
        } else if (effect.status() == QSoundEffect::Error) {
            QCoreApplication::exit(1);
        }
    });
    effect.setSource(QUrl::fromLocalFile(QString::fromLocal8Bit(argv[1])));
    return bench::obeyLines([&effect](const std::string &) {
        const int64_t asked = bench::now();
        effect.play();
        std::cout << asked << std::endl;
    });
}
