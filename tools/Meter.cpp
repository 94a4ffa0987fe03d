#include "Meter.h"

#include "Display.h"
#include "TerminalLine.h"

#include <QtCore/QLocale>

#include <algorithm>

namespace voro {

namespace {

constexpr int NarrowestMeter = 8;
constexpr int WidestMeter = 40;

QString meter(double level, double peak, int width)
{
    const auto columns = [width](double fraction) { return static_cast<int>(std::clamp(fraction, 0.0, 1.0) * width); };
    QString text = QString(columns(level), QLatin1Char('=')).leftJustified(width, QLatin1Char('-'));
    if (const int held = columns(peak); held > 0) {
        text[held - 1] = QLatin1Char('|');
    }
    return QLatin1Char('[') + text + QLatin1Char(']');
}

} // namespace

double PeakHold::update(double level, qint64 time)
{
    if (level >= m_peak || time - m_time >= HoldMs) {
        m_peak = level;
        m_time = time;
    }
    return m_peak;
}

QString recordingLine(const RecordingView &view, int columns)
{
    const QString before = (view.isPaused ? QStringLiteral("||  ") : QStringLiteral("rec ")) + timeText(view.duration);
    const QString after = QLatin1String("  ") + sizeText(view.size);
    const auto room = columns - before.size() - after.size() - 3;
    if (room < NarrowestMeter) {
        return fitted(before + after, columns);
    }
    const int width = static_cast<int>(std::min<qsizetype>(room, WidestMeter));
    return before + QLatin1Char(' ') + meter(view.level, view.peak, width) + after;
}

QString recordingText(const RecordingView &view)
{
    return (view.isPaused ? QStringLiteral("paused ") : QStringLiteral("recording ")) + timeText(view.duration);
}

QString sizeText(qint64 bytes)
{
    return QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

} // namespace voro
