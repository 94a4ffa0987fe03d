#pragma once

#include "Keyboard.h"

#include <multimedia/MediaPlayer.h>
#include <multimedia/NowPlayingConnection.h>

#include <QtCore/QObject>

namespace voro {

/** Shows what a player plays as what is now playing on the device, and passes on what others ask of it. */
class Publication : public QObject {
    Q_OBJECT
public:
    explicit Publication(multimedia::MediaPlayer &player);

    /** Whoever begins to play asks for the role, and takes it from those that are no more important. */
    void setState(multimedia::MediaState::Type state);
    /** Tells what is played; another number means another track. */
    void setTrack(unsigned number, QVariantMap metaData);
    /** Tells that the queue has something after and before what is played. */
    void setNeighbours(bool hasNext, bool hasPrevious);
    void setShuffleMode(multimedia::ShuffleMode::Type mode) { m_connection.setShuffleMode(mode); }

Q_SIGNALS:
    /** Asks for what a key does. */
    void keyAsked(voro::Key key);
    void stopAsked();
    void repeatAsked(voro::multimedia::RepeatMode::Type mode);
    void shuffleAsked(bool isShuffled);

private:
    void connectPlayer();
    void connectCommands();
    void askUnless(multimedia::MediaState::Type state);
    multimedia::RepeatMode::Type nextRepeatMode() const;

    multimedia::MediaPlayer &m_player;
    multimedia::NowPlayingConnection m_connection;
    /** 0 before the first track. */
    unsigned m_track = 0;
    QVariantMap m_metaData;
};

} // namespace voro
