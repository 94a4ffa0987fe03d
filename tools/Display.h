#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>
#include <optional>

namespace voro {

/** What a person is shown of a playback. */
struct View {
    /** Empty while not known. */
    QString title{};
    /** Empty where the medium has no chapters. */
    QString chapter{};
    bool isPaused = false;
    /** The fill level of the buffer (0.0 to 1.0) while it fills, else negative. */
    double buffering = -1;
    /** Milliseconds; an unknown duration is 0. */
    unsigned position = 0;
    unsigned duration = 0;
    /** From 0.0 to 1.0. */
    double volume = 1;
    /** Which of how many plays, from 1. */
    unsigned track = 1;
    unsigned trackCount = 1;
    /** A factor of normal speed. */
    double speed = 1;
    /** Whether captions are shown; nothing when there are none to be shown. */
    std::optional<bool> captions{};

    /** The title and the chapter, as far as they have to be shown and the other view did not have them. */
    QStringList headingsUnlike(const View &other) const;
};

/** Milliseconds as m:ss or h:mm:ss. */
QString timeText(unsigned milliseconds);

/** The line that shows a playback on a terminal, at most that many columns wide. */
QString statusLine(const View &view, int columns);

/** Text from outside that a terminal may get: control characters become U+FFFD. */
QString printable(const QString &text);

/** Shows a playback on standard output. */
class Display {
public:
    virtual ~Display() = default;
    virtual void show(const View &view) = 0;
    /** Makes room for lines that something else writes. */
    virtual void clear() {}

    /** A line that is drawn again and again on a terminal, plain lines elsewhere. */
    static std::unique_ptr<Display> create();
    /** Shows nothing. */
    static std::unique_ptr<Display> createSilent();
};

} // namespace voro
