#pragma once

#include "InfoReader.h"

#include <QtCore/QString>
#include <QtCore/QUrl>

#include <optional>
#include <vector>

namespace voro {

/** The chapters of the medium that is played. They are read beside the playing, from files of this machine only. */
class Chapters : public QObject {
    Q_OBJECT
public:
    /** Changes to the chapters of another medium; there are none until changed(). */
    void follow(const QUrl &medium);

    /** "chapter 2 of 5: Title" at a position in milliseconds; empty where there is none. */
    QString textAt(unsigned position) const;
    /** Where the next chapter begins; nothing in the last one. */
    std::optional<unsigned> after(unsigned position) const;
    /** Where the chapter begins, or in its first seconds the one before; nothing without chapters. */
    std::optional<unsigned> before(unsigned position) const;

Q_SIGNALS:
    void changed();

private:
    struct Chapter {
        unsigned begin;
        QString title;
    };

    void take(const QJsonObject &info);
    /** How many chapters have begun. */
    size_t begunAt(unsigned position) const;

    QUrl m_medium;
    InfoReader *m_reader = nullptr;
    /** In the order of their beginnings. */
    std::vector<Chapter> m_chapters;
};

} // namespace voro
