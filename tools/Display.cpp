#include "Display.h"

#include "Output.h"
#include "TerminalLine.h"

#include <algorithm>
#include <array>

namespace voro {

namespace {

constexpr int NarrowestBar = 8;
constexpr int WidestBar = 60;

QString bar(const View &view, int width)
{
    const auto played = static_cast<int>(std::min(1.0, static_cast<double>(view.position) / view.duration) * width);
    return QLatin1Char('[') + QString(played, QLatin1Char('=')) + QString(width - played, QLatin1Char('-'))
           + QLatin1Char(']');
}

// What is told of a playback only where it is not what everybody expects; empty otherwise.

QString trackText(const View &view)
{
    return view.trackCount > 1 ? QStringLiteral("track %1 of %2").arg(view.track).arg(view.trackCount) : QString();
}

QString speedText(const View &view)
{
    return view.isPaused || view.speed == 1 ? QString() : QStringLiteral("speed %1").arg(view.speed);
}

QString captionsText(const View &view)
{
    if (!view.captions) {
        return {};
    }
    return *view.captions ? QStringLiteral("captions on") : QStringLiteral("captions off");
}

constexpr std::array Notes{trackText, speedText, captionsText};

class TerminalDisplay : public Display {
public:
    void show(const View &view) override
    {
        const int columns = TerminalLine::columns();
        QByteArray headings;
        for (const QString &heading : view.headingsUnlike(m_last)) {
            headings += fitted(heading, columns).toUtf8() + '\n';
        }
        m_last = view;
        m_line.draw(statusLine(view, columns), headings);
    }

    void clear() override { m_line.clear(); }

private:
    View m_last;
    TerminalLine m_line;
};

class PlainDisplay : public Display {
public:
    void show(const View &view) override
    {
        for (const QString &heading : view.headingsUnlike(m_last)) {
            line(heading);
        }
        for (const auto note : Notes) {
            if (const QString text = note(view); !text.isEmpty() && text != note(m_last)) {
                line(text);
            }
        }
        if (view.buffering >= 0 && m_last.buffering < 0) {
            line(QStringLiteral("buffering"));
        }
        if (view.isPaused != m_last.isPaused) {
            line(view.isPaused ? QStringLiteral("paused") : QStringLiteral("playing"));
        }
        if (!view.title.isEmpty() && positionText(view) != positionText(m_last)) {
            line(positionText(view));
        }
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

QStringList View::headingsUnlike(const View &other) const
{
    QStringList headings;
    const bool isTitledAnew = title != other.title;
    if (isTitledAnew && !title.isEmpty()) {
        headings.append(title);
    }
    // What comes without a title belongs to a medium that has not begun.
    if (!title.isEmpty() && !chapter.isEmpty() && (isTitledAnew || chapter != other.chapter)) {
        headings.append(chapter);
    }
    return headings;
}

QString timeText(unsigned milliseconds)
{
    const unsigned seconds = milliseconds / 1000;
    const QString rest = QStringLiteral(":%1").arg(seconds % 60, 2, 10, QLatin1Char('0'));
    const unsigned minutes = seconds / 60;
    if (minutes < 60) {
        return QString::number(minutes) + rest;
    }
    return QStringLiteral("%1:%2").arg(minutes / 60).arg(minutes % 60, 2, 10, QLatin1Char('0')) + rest;
}

QString statusLine(const View &view, int columns)
{
    const QString sign = view.isPaused ? QStringLiteral("|| ") : QStringLiteral("> ");
    const QString before = sign.leftJustified(3) + timeText(view.position) + QLatin1Char(' ');
    QString after = view.duration ? QLatin1Char(' ') + timeText(view.duration) : QString();
    after += QStringLiteral("  volume %1%").arg(qRound(view.volume * 100));
    if (view.buffering >= 0) {
        after += QStringLiteral("  buffering %1%").arg(static_cast<int>(view.buffering * 100));
    }
    for (const auto note : Notes) {
        if (const QString text = note(view); !text.isEmpty()) {
            after += QLatin1String("  ") + text;
        }
    }
    const auto room = columns - before.size() - after.size() - 2;
    if (view.duration == 0 || room < NarrowestBar) {
        return fitted(before + after.trimmed(), columns);
    }
    return before + bar(view, static_cast<int>(std::min<qsizetype>(room, WidestBar))) + after;
}

QString printable(const QString &text)
{
    QString result = text;
    for (QChar &character : result) {
        if (character.category() == QChar::Other_Control || character.category() == QChar::Other_Format) {
            character = QChar::ReplacementCharacter;
        }
    }
    return result;
}

std::unique_ptr<Display> Display::create()
{
    if (TerminalLine::isAvailable()) {
        return std::make_unique<TerminalDisplay>();
    }
    return std::make_unique<PlainDisplay>();
}

std::unique_ptr<Display> Display::createSilent()
{
    return std::make_unique<SilentDisplay>();
}

} // namespace voro
