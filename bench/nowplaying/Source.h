#pragma once

#include <QtCore/QString>

namespace bench {

/** What is now playing, in a process of its own that is driven by lines. */
class Source {
public:
    virtual ~Source() = default;
    /** Tells of another track. */
    virtual void publish(const QString &title) = 0;
    /** Tells of another track and another state. */
    virtual void turn(const QString &title) = 0;
};

// What every source tells of its track beside the title.
inline const QString Artist = QStringLiteral("Some Artist");
inline const QString Album = QStringLiteral("An Album");
inline const QString Artwork = QStringLiteral("file:///usr/share/pixmaps/cover.png");
inline constexpr int Track = 7;
inline constexpr unsigned DurationMs = 234'567;

/**
 * Obeys "publish TITLE" and "turn TITLE" from standard input until its end, and answers with the time when it began.
 */
int obeyInput(Source &source);

/** Prints the time of a request for the next track. */
void tellNext();

} // namespace bench
