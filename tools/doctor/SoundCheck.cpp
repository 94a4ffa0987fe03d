#include "SoundCheck.h"

#include "Devices.h"

#include <multimedia/AudioRecorder.h>
#include <multimedia/MediaPlayer.h>

#include <QtCore/QEventLoop>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>

#include <Folders.h>
#include <Medium.h>
#include <Problem.h>

namespace voro::doctor {

namespace {

using multimedia::AudioRecorder;
using multimedia::MediaError;
using multimedia::MediaPlayer;

constexpr int PatienceMs = 5'000;

bool isSilent(PpsObject &audio)
{
    const QVariantMap objects = PpsObject::decode(audio.read());
    return objects.value(QStringLiteral("@audio")).toMap().value(QStringLiteral("silent")).toBool();
}

Finding stuck()
{
    return {Health::Missing, QStringLiteral("the sample does not get on: the sound server hangs"),
            QStringLiteral("start the sound server anew, for instance systemctl --user restart pipewire-pulse")};
}

/** What keeps the output that is used from being heard; good without. */
Finding examineVolume(const std::optional<Device> &output)
{
    if (output && output->isMuted) {
        return {Health::Missing, QStringLiteral("the sample plays, but the output “%1” is muted").arg(output->name),
                QStringLiteral("voro remote mute off")};
    }
    if (output && output->volume == 0) {
        return {Health::Missing,
                QStringLiteral("the sample plays, but the volume of the output “%1” is 0").arg(output->name),
                QStringLiteral("voro remote volume 50%")};
    }
    return {Health::Good,
            QStringLiteral("the sample plays; if you hear nothing, check volume and output in the sound settings")};
}

/** Plays the sample without being heard. */
Finding tryOutput(const std::optional<Device> &output)
{
    MediaPlayer player;
    PpsObject audio(contextFolder(QStringLiteral("MediaPlayer")) + QLatin1String("/audio"));
    player.setVolume(0);
    player.setSourceUrl(sampleMedium().url);
    const auto error = player.play();
    if (error == MediaError::SourceUnavailable && QFileInfo::exists(sampleMedium().url.toLocalFile())) {
        return stuck();
    }
    if (error != MediaError::None) {
        return {Health::Missing, QStringLiteral("the sample cannot be played: ") + problemOf(error)};
    }
    bool hasPlayed = false;
    QEventLoop loop;
    QObject::connect(&player, qOverload<unsigned>(&MediaPlayer::positionChanged), &loop, [&](unsigned position) {
        hasPlayed = position > 0;
        if (hasPlayed) {
            loop.quit();
        }
    });
    QTimer::singleShot(PatienceMs, &loop, &QEventLoop::quit);
    loop.exec();
    if (!hasPlayed) {
        return stuck();
    }
    audio.open(PpsOpenMode::Subscribe);
    if (isSilent(audio)) {
        return {Health::Missing, QStringLiteral("no sound server answers; media play without sound"),
                QStringLiteral("install and start PipeWire (pipewire-pulse) or PulseAudio (pulseaudio)")};
    }
    return examineVolume(output);
}

/** Prepares a recording that never begins. */
Finding tryInput(const std::optional<Device> &input)
{
    const QTemporaryDir folder;
    AudioRecorder recorder;
    // A recorder without the daemon can be prepared all the same.
    const bool hasContext = !contextFolder(QStringLiteral("AudioRecorder")).isEmpty();
    const QUrl file = QUrl::fromLocalFile(folder.filePath(QStringLiteral("a.wav")));
    recorder.setOutputUrl(file);
    const auto error = hasContext ? recorder.prepare() : MediaError::InvalidState;
    if (error != MediaError::None) {
        return {Health::Limited, QStringLiteral("nothing can be recorded: ") + recordingProblem(error, file),
                QStringLiteral("connect a microphone and choose it in the sound settings")};
    }
    if (input && (input->isMuted || input->volume == 0)) {
        return {Health::Limited, QStringLiteral("recordings are silent: the input “%1” is muted").arg(input->name),
                QStringLiteral("turn it on in the sound settings")};
    }
    return {Health::Good, QStringLiteral("there is an input to record from")};
}

} // namespace

std::vector<Finding> SoundCheck::examine() const
{
    const Devices devices = defaultDevices();
    return {tryOutput(devices.output), tryInput(devices.input)};
}

} // namespace voro::doctor
