// The reference's examples, one for each class and enumeration; compiled by the tests, shown by
// docs/reference/examples.dox.

#include <multimedia/AudioRecorder.h>
#include <multimedia/MediaKeyWatcher.h>
#include <multimedia/MediaPlayer.h>
#include <multimedia/MetaData.h>
#include <multimedia/NowPlayingConnection.h>
#include <multimedia/NowPlayingController.h>
#include <multimedia/SystemSound.h>
#include <voro/audio_manager.h>
#include <voro/device/DisplayInfo.h>
#include <voro/mmr.h>
#include <voro/PpsObject.h>
#include <voro/slog2.h>
#include <voro/UIToolkitSupport.h>

#include <QtCore/QDebug>

using namespace voro::multimedia;

void mediaPlayer(QObject *parent)
{
    //! [MediaPlayer]
    auto *player = new MediaPlayer(parent);
    QObject::connect(player, qOverload<uint>(&MediaPlayer::positionChanged), [](uint ms) { qInfo() << ms / 1000.0; });
    QObject::connect(player, &MediaPlayer::playbackCompleted, player, &QObject::deleteLater);
    player->setSourceUrl(QUrl::fromLocalFile(QStringLiteral("/music/song.ogg")));
    if (const auto error = player->play(); error != MediaError::None) {
        qWarning() << "it does not play:" << error;
    }
    //! [MediaPlayer]
}

void audioRecorder(QObject *parent)
{
    //! [AudioRecorder]
    auto *recorder = new AudioRecorder(parent);
    recorder->setOutputUrl(QUrl::fromLocalFile(QStringLiteral("/tmp/take.opus"))); // the extension chooses the format
    QObject::connect(recorder, &AudioRecorder::recordingLevelChanged, [](double level) { qInfo() << level; });
    if (recorder->record() == MediaError::None) {
        recorder->reset(); // the file is complete
    }
    //! [AudioRecorder]
}

void nowPlayingConnection(MediaPlayer *player)
{
    //! [NowPlayingConnection]
    auto *connection = new NowPlayingConnection(QStringLiteral("player"), player);
    QObject::connect(connection, &NowPlayingConnection::play, player, &MediaPlayer::play);
    QObject::connect(connection, &NowPlayingConnection::pause, player, &MediaPlayer::pause);
    QObject::connect(player, &MediaPlayer::mediaStateChanged, connection, &NowPlayingConnection::setMediaState);
    QObject::connect(player, &MediaPlayer::metaDataChanged, connection, &NowPlayingConnection::setMetaData);
    if (connection->acquire() != MediaError::None) {
        qInfo() << "another application keeps the role";
    }
    //! [NowPlayingConnection]
}

void nowPlayingController(QObject *parent)
{
    //! [NowPlayingController]
    auto *remote = new NowPlayingController(parent);
    QObject::connect(remote, &NowPlayingController::metaDataChanged, [](const QVariantMap &metaData) {
        qInfo() << metaData.value(QString::fromLatin1(MetaData::Title)).toString();
    });
    remote->playPause();
    //! [NowPlayingController]
}

void mediaKeyWatcher(QObject *parent)
{
    //! [MediaKeyWatcher]
    auto *key = new MediaKeyWatcher(MediaKey::PlayPause, parent);
    QObject::connect(key, &MediaKeyWatcher::shortPress, [](MediaKey::Type pressed) { qInfo() << "tapped" << pressed; });
    QObject::connect(key, &MediaKeyWatcher::longPress, [](MediaKey::Type pressed) { qInfo() << "held" << pressed; });
    //! [MediaKeyWatcher]
}

void systemSound(QObject *parent)
{
    //! [SystemSound]
    auto *shutter = new SystemSound(SystemSound::CameraShutterEvent, parent); // loaded now, so that it plays at once
    shutter->play();
    //! [SystemSound]
}

void metaData(const MediaPlayer &player)
{
    //! [MetaData]
    const auto artist = player.metaData().value(QString::fromLatin1(MetaData::Artist)).toString();
    //! [MetaData]
    qInfo() << artist;
}

void enumerations(MediaPlayer *player, AudioRecorder *recorder, NowPlayingConnection *connection, MediaKeyWatcher *key)
{
    //! [AudioChannelConfiguration]
    recorder->setAudioChannelConfiguration(AudioChannelConfiguration::Mono);
    //! [AudioChannelConfiguration]
    //! [AudioOutput]
    player->setAudioOutput(AudioOutput::None); // pictures only; the player is Unprepared now
    //! [AudioOutput]
    //! [BufferStatus]
    QObject::connect(player, &MediaPlayer::bufferStatusChanged, [](BufferStatus::Type status) {
        qInfo() << (status == BufferStatus::Buffering ? "waiting for the net" : "goes on");
    });
    //! [BufferStatus]
    //! [DeviceMode]
    connection->setDeviceMode(DeviceMode::Capture); // the next acquire() tells that it records
    //! [DeviceMode]
    //! [EqualizerPreset]
    player->setEqualizerPreset(EqualizerPreset::BassBoost);
    //! [EqualizerPreset]
    //! [MediaError]
    if (const MediaError::Type error = player->prepare(); error == MediaError::SourceUnavailable) {
        qWarning() << "it is not there";
    }
    //! [MediaError]
    //! [MediaKey]
    key->setKey(MediaKey::Next);
    //! [MediaKey]
    //! [MediaKeyNotification]
    key->setNotification(MediaKeyNotification::Threshold);
    //! [MediaKeyNotification]
    //! [MediaState]
    if (player->mediaState() == MediaState::Started) {
        player->pause();
    }
    //! [MediaState]
    //! [OverlayStyle]
    connection->setOverlayStyle(OverlayStyle::Fancy);
    //! [OverlayStyle]
    //! [PriorityLevel]
    connection->setPriorityLevel(PriorityLevel::High); // the next acquire() takes the role from whoever has it
    //! [PriorityLevel]
    //! [RepeatMode]
    player->setRepeatMode(RepeatMode::All);
    //! [RepeatMode]
    //! [ShuffleMode]
    connection->setShuffleMode(ShuffleMode::Off); // controllers offer to switch it on
    //! [ShuffleMode]
    //! [VideoOutput]
    player->setVideoOutput(VideoOutput::PrimaryDisplay);
    //! [VideoOutput]
}

void ppsObject(QObject *parent)
{
    //! [PpsObject]
    auto *object = new voro::PpsObject(QStringLiteral("/pps/example/lamp?delta"), parent);
    QObject::connect(object, &voro::PpsObject::readyRead, [object] {
        const QMap<QString, voro::PpsAttribute> lamp = voro::PpsObject::decodeWithFlags(object->read());
        qInfo() << lamp.value(QStringLiteral("@lamp"));
    });
    if (!object->open(voro::PpsOpenMode::PublishSubscribe) || !object->write("on:b:true\n")) {
        qWarning() << object->errorString();
    }
    //! [PpsObject]
}

void ppsAttribute(const QByteArray &text)
{
    //! [PpsAttribute]
    const auto lamp = voro::PpsObject::decodeWithFlags(text).value(QStringLiteral("@lamp"));
    const bool isOn = lamp.toMap().value(QStringLiteral("on")).toBool();
    const bool isGone = lamp.flags().testFlag(voro::PpsAttributeFlag::Deleted);
    //! [PpsAttribute]
    qInfo() << isOn << isGone;
}

void renderer()
{
    //! [mmr]
    mmr_connection_t *connection = mmr_connect(nullptr);
    mmr_context_t *context = connection ? mmr_context_create(connection, "example", 0, 0700) : nullptr;
    if (context && mmr_output_attach(context, "audio:default", "audio") >= 0
        && mmr_input_attach(context, "file:/music/song.ogg", "track") == 0) {
        mmr_play(context);
    } else if (const mmr_error_info_t *info = context ? mmr_error_info(context) : nullptr) {
        qWarning() << info->error_code << info->extra_text;
    }
    mmr_context_destroy(context);
    mmr_disconnect(connection);
    //! [mmr]
}

void dictionary(mmr_context_t *context)
{
    //! [strm_dict]
    if (strm_dict_t *parameters = strm_dict_new()) {
        if (strm_dict_t *filled = strm_dict_set(parameters, "updateinterval", "250")) {
            mmr_context_parameters(context, filled); // consumes it
        } else {
            strm_dict_destroy(parameters);
        }
    }
    //! [strm_dict]
}

void audioManager(MediaPlayer *player)
{
    //! [audio_manager]
    unsigned handle = 0;
    if (audio_manager_get_handle(AUDIO_TYPE_ALERT, &handle) == 0) {
        player->setAudioManagerHandle(handle); // the stream's media.role is that of alerts
    }
    //! [audio_manager]
}

void support(MediaPlayer *player)
{
    //! [UIToolkitSupport]
    player->setWindowGroupId(voro::UIToolkitSupport().windowGroupID());
    qInfo() << voro::UIToolkitSupport::absolutePathFromUrl(QUrl(QStringLiteral("asset:///bell.ogg")));
    //! [UIToolkitSupport]
    //! [DisplayInfo]
    qInfo() << voro::device::DisplayInfo::primaryDisplayId() << voro::device::DisplayInfo::secondaryDisplayId();
    //! [DisplayInfo]
    //! [slog2]
    char hidden[64];
    if (slog2_obfuscate(0, '.', 0, "/home/me/holiday.mp4", sizeof hidden, hidden) == 0) {
        qInfo() << hidden; // only how long its parts are, and the extension
    }
    //! [slog2]
}
