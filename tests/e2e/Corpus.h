#pragma once

#include <QtCore/QDir>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

/* Short media in every format that the encoder writes, made on the spot and kept in the build folder. */

namespace media {

struct Sample {
    QString name;
    /** What goes into it: "sound", "film", "pictures", "captions" or "cover". */
    QString content;
    /** How the encoder makes it. */
    QStringList arguments;
};

/** What an independent reader tells of a medium. */
struct Facts {
    int duration = 0; ///< ms, 0 when it tells none
    QString title;
};

/** A folder of samples; the encoder runs only for those that are not there yet, and for several at once. */
class Corpus {
public:
    /** Makes the samples that a file lists, a line each. */
    Corpus(const QString &list, const QString &folder);

    const QList<Sample> &samples() const { return m_samples; }
    QString path(const Sample &sample) const;
    Facts facts(const Sample &sample) const;

private:
    QList<Sample> m_samples;
    QDir m_folder;
};

} // namespace media
