#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

/* Media files made on the spot. Each function ends the test program when the encoder fails. */

namespace media {

/** Encodes what a filter graph of the encoder generates into a file, with additional output arguments. */
void encode(const QString &path, const QString &graph, const QStringList &arguments = {});

struct Tone {
    double frequency = 440; ///< Hz
    double seconds = 1.0;
    QStringList tags = {}; ///< "title=Some title"
    int channels = 2;
    bool hasPicture = false;
};

/** Makes a file of a sine tone; its extension chooses the format. Returns the path. */
QString makeTone(const QString &path, const Tone &tone = {});

} // namespace media
