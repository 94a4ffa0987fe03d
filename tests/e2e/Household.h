#pragma once

#include <multimedia/AudioRecorder.h>
#include <multimedia/MediaKeyWatcher.h>
#include <multimedia/MediaPlayer.h>
#include <multimedia/NowPlayingConnection.h>
#include <multimedia/NowPlayingController.h>

#include <array>

/**
 * Everything that an application may have of a daemon: three players, a recorder, the now-playing role, two
 * controllers and a watched key.
 */
class Household : public QObject {
public:
    /** Plays the medium; records into files of the folder. */
    Household(const QUrl &medium, const QString &folder);

    /** Has all of it at work. Empty, or what does not work. */
    QString start();
    /** Whether the controllers see the role's holder at work, and the players' positions move. */
    bool isAtWork() const;
    /** Forgets what was told up to now. */
    void forget();
    /** Whether everybody who has to was told that the daemon is gone. Nobody was told twice. */
    bool isTold() const;
    /** What everybody was told, for people. */
    QString report() const;
    /** Whether the watched key was pressed since. */
    bool isKeyPressed() const { return m_presses > 0; }
    /** The file that was recorded into last. */
    QString recording() const { return m_recording; }
    /** Whether the head of a WAV file says how long the file is, to the byte. */
    static bool isComplete(const QString &recording);
    voro::multimedia::MediaPlayer &player(size_t index) { return m_players[index]; }

    static constexpr size_t Players = 3;

private:
    std::array<voro::multimedia::MediaPlayer, Players> m_players;
    std::array<int, Players> m_playerErrors{};
    std::array<int, Players> m_positions{};
    voro::multimedia::AudioRecorder m_recorder;
    voro::multimedia::NowPlayingConnection m_holder;
    std::array<voro::multimedia::NowPlayingController, 2> m_controllers;
    voro::multimedia::MediaKeyWatcher m_watcher;
    QString m_folder;
    QString m_recording;
    int m_recordings = 0;
    int m_recorderErrors = 0;
    int m_revocations = 0;
    int m_presses = 0;
    int m_wrong = 0;
};
