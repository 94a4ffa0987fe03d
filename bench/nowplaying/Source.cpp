#include "Source.h"

#include "Figures.h"
#include "Lines.h"

#include <algorithm>
#include <iostream>
#include <string>

namespace bench {

namespace {

void obey(Source &source, const std::string &line)
{
    const size_t space = std::min(line.find(' '), line.size());
    const QString title = QString::fromStdString(line.substr(std::min(space + 1, line.size())));
    const int64_t asked = now();
    if (line.starts_with("turn ")) {
        source.turn(title);
    } else {
        source.publish(title);
    }
    // What is sent from the event loop goes first.
    QMetaObject::invokeMethod(
        qApp, [asked] { std::cout << asked << std::endl; }, Qt::QueuedConnection);
}

} // namespace

int obeyInput(Source &source)
{
    tellReady();
    return obeyLines([&source](const std::string &line) { obey(source, line); });
}

void tellNext()
{
    std::cout << now() << std::endl;
}

} // namespace bench
