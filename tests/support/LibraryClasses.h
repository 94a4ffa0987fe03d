#pragma once

#include <multimedia/AudioChannelConfiguration.h>
#include <multimedia/AudioRecorder.h>
#include <multimedia/MediaKeyWatcher.h>
#include <multimedia/MediaPlayer.h>
#include <multimedia/NowPlayingConnection.h>
#include <multimedia/NowPlayingController.h>
#include <multimedia/SystemSound.h>

/* What the library declares to the meta-object system. */

inline const QList<const QMetaObject *> LibraryClasses{
    &voro::multimedia::AudioRecorder::staticMetaObject,
    &voro::multimedia::MediaKeyWatcher::staticMetaObject,
    &voro::multimedia::MediaPlayer::staticMetaObject,
    &voro::multimedia::NowPlayingConnection::staticMetaObject,
    &voro::multimedia::NowPlayingController::staticMetaObject,
    &voro::multimedia::SystemSound::staticMetaObject,
};

/** The classes that hold nothing but an enumeration. */
inline const QList<const QMetaObject *> LibraryEnumerations{
    &voro::multimedia::AudioChannelConfiguration::staticMetaObject,
    &voro::multimedia::AudioOutput::staticMetaObject,
    &voro::multimedia::BufferStatus::staticMetaObject,
    &voro::multimedia::DeviceMode::staticMetaObject,
    &voro::multimedia::EqualizerPreset::staticMetaObject,
    &voro::multimedia::MediaError::staticMetaObject,
    &voro::multimedia::MediaKey::staticMetaObject,
    &voro::multimedia::MediaKeyNotification::staticMetaObject,
    &voro::multimedia::MediaState::staticMetaObject,
    &voro::multimedia::OverlayStyle::staticMetaObject,
    &voro::multimedia::PriorityLevel::staticMetaObject,
    &voro::multimedia::RepeatMode::staticMetaObject,
    &voro::multimedia::ShuffleMode::staticMetaObject,
    &voro::multimedia::VideoOutput::staticMetaObject,
};
