#include "TerminalLine.h"

#include "Output.h"

#include <QtCore/QList>

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cwchar>
#include <utility>

namespace voro {

namespace {

int columnsOf(const QString &text)
{
    int columns = 0;
    for (const char32_t character : text.toUcs4()) {
        columns += std::max(0, wcwidth(wchar_t(character)));
    }
    return columns;
}

} // namespace

QString fitted(QString text, int columns)
{
    while (columnsOf(text) > columns) {
        text.chop(text.back().isLowSurrogate() ? 2 : 1);
    }
    return text;
}

TerminalLine::~TerminalLine()
{
    if (m_isDrawn) {
        print("\n");
    }
}

bool TerminalLine::isAvailable()
{
    return isatty(STDOUT_FILENO);
}

int TerminalLine::columns()
{
    winsize size{};
    const int columns = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
    // A character in the last column may begin another line.
    return columns - 1;
}

void TerminalLine::draw(const QString &line, const QByteArray &above)
{
    m_isDrawn = true;
    print("\r\x1b[K" + above + line.toUtf8());
}

void TerminalLine::clear()
{
    if (std::exchange(m_isDrawn, false)) {
        print("\r\x1b[K");
    }
}

} // namespace voro
