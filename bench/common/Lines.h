#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QSocketNotifier>

#include <unistd.h>

#include <functional>
#include <iostream>
#include <string>

namespace bench {

/** Tells on standard output that the program is ready. */
inline void tellReady()
{
    std::cout << "ready" << std::endl;
}

/** Runs the application's event loop, in which the lines of standard input are obeyed, until their end. */
inline int obeyLines(const std::function<void(const std::string &line)> &obey)
{
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, [&obey] {
        std::string line;
        if (std::getline(std::cin, line)) {
            obey(line);
        } else {
            QCoreApplication::quit();
        }
    });
    return QCoreApplication::exec();
}

} // namespace bench
