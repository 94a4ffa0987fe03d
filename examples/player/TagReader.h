#pragma once

#include "Tags.h"

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <deque>
#include <memory>

namespace voro::multimedia {
class MediaPlayer;
}

/**
 * Reads the tags of media one after the other, with a player that plays nothing: what a broken file does to a decoder
 * it does to the decoder's process. Lives in a thread of its own, because opening a medium takes its time.
 */
class TagReader : public QObject {
    Q_OBJECT
public:
    TagReader();
    ~TagReader() override;

    /** Reads the medium next, whatever was asked for before: what is seen now matters most. */
    Q_INVOKABLE void read(const QString &path);
    /** Forgets what was asked for. */
    Q_INVOKABLE void clear();

Q_SIGNALS:
    /** What was found; an embedded picture stands in `picture`. */
    void found(const QString &path, const Tags &tags, const QByteArray &picture);

private:
    void next();
    void finish();

    std::unique_ptr<voro::multimedia::MediaPlayer> m_player;
    std::deque<QString> m_wanted;
    QString m_path;
    /** Ends the waiting for tags that do not come. */
    QTimer m_patience;
};
