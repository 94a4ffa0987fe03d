#include "Display.h"

#include "Output.h"

#include <QtCore/QList>

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cwchar>

namespace voro {

namespace {

constexpr int NarrowestBar = 8;
constexpr int WidestBar = 60;

int columnsOf(const QString &text)
{
    int columns = 0;
    for (const char32_t character : text.toUcs4())
        columns += std::max(0, wcwidth(wchar_t(character)));
    return columns;
}

QString fitted(QString text, int columns)
{
    while (columnsOf(text) > columns)
        text.chop(text.back().isLowSurrogate() ? 2 : 1);
    return text;
}

QString bar(const View &view, int width)
{
    const auto played = int(std::min(1.0, double(view.position) / view.duration) * width);
    return QLatin1Char('[') + QString(played, QLatin1Char('=')) + QString(width - played, QLatin1Char('-'))
           + QLatin1Char(']');
}

int terminalColumns()
{
    winsize size{};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

class TerminalDisplay : public Display {
public:
    ~TerminalDisplay() override
    {
        if (m_isDrawn)
            print("\n");
    }

    void show(const View &view) override
    {
        QByteArray out = "\r\x1b[K";
        if (view.isTitledUnlike(m_last))
            out += fitted(view.title, terminalColumns() - 1).toUtf8() + '\n';
        m_last = view;
        m_isDrawn = true;
        print(out + statusLine(view, terminalColumns() - 1).toUtf8());
    }

    void clear() override
    {
        if (m_isDrawn)
            print("\r\x1b[K");
        m_isDrawn = false;
    }

private:
    View m_last;
    bool m_isDrawn = false;
};

class PlainDisplay : public Display {
public:
    void show(const View &view) override
    {
        if (view.isTitledUnlike(m_last))
            line(view.title);
        if (view.buffering >= 0 && m_last.buffering < 0)
            line(QStringLiteral("buffering"));
        if (view.isPaused != m_last.isPaused)
            line(view.isPaused ? QStringLiteral("paused") : QStringLiteral("playing"));
        if (!view.title.isEmpty() && positionText(view) != positionText(m_last))
            line(positionText(view));
        m_last = view;
    }

private:
    static void line(const QString &text) { print(text.toUtf8() + '\n'); }

    static QString positionText(const View &view)
    {
        return view.duration ? timeText(view.position) + QLatin1String(" / ") + timeText(view.duration)
                             : timeText(view.position);
    }

    View m_last;
};

class SilentDisplay : public Display {
public:
    void show(const View &) override {}
};

} // namespace

QString timeText(unsigned milliseconds)
{
    const unsigned seconds = milliseconds / 1000;
    const QString rest = QStringLiteral(":%1").arg(seconds % 60, 2, 10, QLatin1Char('0'));
    const unsigned minutes = seconds / 60;
    if (minutes < 60)
        return QString::number(minutes) + rest;
    return QStringLiteral("%1:%2").arg(minutes / 60).arg(minutes % 60, 2, 10, QLatin1Char('0')) + rest;
}

QString statusLine(const View &view, int columns)
{
    const QString sign = view.isPaused ? QStringLiteral("|| ") : QStringLiteral("> ");
    const QString before = sign.leftJustified(3) + timeText(view.position) + QLatin1Char(' ');
    QString after = view.duration ? QLatin1Char(' ') + timeText(view.duration) : QString();
    after += QStringLiteral("  volume %1%").arg(qRound(view.volume * 100));
    if (view.buffering >= 0)
        after += QStringLiteral("  buffering %1%").arg(int(view.buffering * 100));
    const auto room = columns - before.size() - after.size() - 2;
    if (view.duration == 0 || room < NarrowestBar)
        return fitted(before + after.trimmed(), columns);
    return before + bar(view, int(std::min<qsizetype>(room, WidestBar))) + after;
}

QString printable(const QString &text)
{
    QString result = text;
    for (QChar &character : result)
        if (character.category() == QChar::Other_Control || character.category() == QChar::Other_Format)
            character = QChar::ReplacementCharacter;
    return result;
}

std::unique_ptr<Display> Display::create()
{
    if (isatty(STDOUT_FILENO))
        return std::make_unique<TerminalDisplay>();
    return std::make_unique<PlainDisplay>();
}

std::unique_ptr<Display> Display::createSilent()
{
    return std::make_unique<SilentDisplay>();
}

} // namespace voro
