#pragma once

#include <QtCore/QString>
#include <QtCore/QtGlobal>

namespace voro {

/** Holds the highest level for a while, so that an eye can read it; then it falls to the present one. */
class PeakHold {
public:
    static constexpr qint64 HoldMs = 1500;

    /** Takes a level at a time (milliseconds); the peak to show. */
    double update(double level, qint64 time);

private:
    double m_peak = 0;
    qint64 m_time = 0;
};

/** What a person is shown of a recording. */
struct RecordingView {
    bool isPaused = false;
    /** Milliseconds. */
    unsigned duration = 0;
    /** From 0.0 to 1.0. */
    double level = 0;
    double peak = 0;
    /** Of the file, in bytes. */
    qint64 size = 0;
};

/** The line that shows a recording on a terminal, at most that many columns wide. */
QString recordingLine(const RecordingView &view, int columns);

/** The same in words that change once a second, for what is no terminal. */
QString recordingText(const RecordingView &view);

/** Bytes as "1.5 MB". */
QString sizeText(qint64 bytes);

} // namespace voro
