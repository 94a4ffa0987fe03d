#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace voro {

/** A text cut to so many columns of a terminal. */
QString fitted(QString text, int columns);

/**
 * A line that is drawn again and again on the terminal at standard output. The terminal's next line follows it when
 * the object goes.
 */
class TerminalLine {
public:
    TerminalLine() = default;
    ~TerminalLine();
    TerminalLine(const TerminalLine &) = delete;
    TerminalLine &operator=(const TerminalLine &) = delete;

    /** Whether standard output is a terminal. */
    static bool isAvailable();
    /** The columns that a line may have. */
    static int columns();

    /** Draws the line anew; `above` is written before it and stays. */
    void draw(const QString &line, const QByteArray &above = {});
    /** Makes room for lines that something else writes. */
    void clear();

private:
    bool m_isDrawn = false;
};

} // namespace voro
