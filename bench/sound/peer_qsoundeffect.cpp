/* The peer QSoundEffect: plays one file that it has loaded at each line of input, and tells when it was asked to.
   Argument: the file. */

#include "Figures.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QSocketNotifier>
#include <QtCore/QUrl>
#include <QtMultimedia/QSoundEffect>

#include <unistd.h>

#include <iostream>
#include <string>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 2)
        return 2;
    QSoundEffect effect;
    QObject::connect(&effect, &QSoundEffect::statusChanged, [&] {
        if (effect.status() == QSoundEffect::Ready)
            std::cout << "ready" << std::endl;
        else if (effect.status() == QSoundEffect::Error)
            QCoreApplication::exit(1);
    });
    effect.setSource(QUrl::fromLocalFile(QString::fromLocal8Bit(argv[1])));
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, [&] {
        std::string line;
        if (!std::getline(std::cin, line)) {
            QCoreApplication::quit();
            return;
        }
        const int64_t asked = bench::now();
        effect.play();
        std::cout << asked << std::endl;
    });
    return QCoreApplication::exec();
}
