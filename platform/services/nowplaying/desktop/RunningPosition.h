#pragma once

#include <QtCore/QElapsedTimer>

#include <algorithm>

namespace voro::nowplaying {

/** A position that runs on between reports. All times in milliseconds. */
class RunningPosition {
public:
    void set(qint64 position)
    {
        m_reported = position;
        m_since.start();
    }
    /** The speed, 1.0 being normal and 0 while it holds. */
    void setRate(double rate)
    {
        set(now());
        m_rate = rate;
    }
    /** The track's end, where it holds; 0 when not known. */
    void setDuration(qint64 duration) { m_duration = duration; }

    qint64 now() const
    {
        const qint64 passed =
            m_since.isValid() ? static_cast<qint64>(static_cast<double>(m_since.elapsed()) * m_rate) : 0;
        const qint64 position = std::max<qint64>(m_reported + passed, 0);
        return m_duration > 0 ? std::min(position, std::max(m_duration, m_reported)) : position;
    }

private:
    qint64 m_reported = 0;
    qint64 m_duration = 0;
    double m_rate = 0;
    QElapsedTimer m_since;
};

} // namespace voro::nowplaying
