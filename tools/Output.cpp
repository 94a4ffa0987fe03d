#include "Output.h"

#include <cstdio>

namespace voro {

void print(const QByteArray &text)
{
    std::fwrite(text.constData(), 1, static_cast<size_t>(text.size()), stdout);
    std::fflush(stdout);
}

void complain(const QString &text)
{
    std::fprintf(stderr, "voro: %s\n", text.toLocal8Bit().constData());
}

} // namespace voro
