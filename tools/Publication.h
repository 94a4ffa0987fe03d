#pragma once

#include "Keyboard.h"

#include <multimedia/MediaPlayer.h>
#include <multimedia/NowPlayingConnection.h>

#include <QtCore/QObject>

#include <functional>

namespace voro {

/** Shows what a player plays as what is now playing on the device, and passes on what others ask of it. Whoever takes the
    role over does not end the playback. */
class Publication : public QObject {
    Q_OBJECT
public:
    /** `ask` is called with the key that does what was asked. */
    Publication(multimedia::MediaPlayer &player, std::function<void(Key)> ask, QObject *parent);

    /** Tells that the queue has something after and before what is played. */
    void setNeighbours(bool hasNext, bool hasPrevious);

private:
    void connectPlayer();
    void connectCommands();
    void publishState(multimedia::MediaState::Type state);
    void askUnless(multimedia::MediaState::Type state);

    multimedia::MediaPlayer &m_player;
    const std::function<void(Key)> m_ask;
    multimedia::NowPlayingConnection m_connection;
};

} // namespace voro
