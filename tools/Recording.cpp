#include "Recording.h"

#include "Display.h"
#include "Folders.h"
#include "Output.h"
#include "Problem.h"
#include "SignalPrinter.h"
#include "StopSignals.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>

#include <algorithm>

namespace voro {

using multimedia::AudioRecorder;
using multimedia::MediaError;
using multimedia::MediaState;

namespace {

/** Milliseconds between two reports where a person watches the level or the length counts. */
constexpr unsigned ReportInterval = 100;
/** Reports come at least every second. */
constexpr int LongestSilence = 3'000;

} // namespace

Recording::Recording(RecordingSettings settings) : Session("record"), m_settings(std::move(settings))
{
    if (!m_settings.json && TerminalLine::isAvailable()) {
        m_line.emplace();
    }
    connect(&m_silence, &QTimer::timeout, this, &Recording::checkRenderer);
    m_silence.start(LongestSilence);
    m_time.start();
    connectRecorder();
}

void Recording::connectRecorder()
{
    if (m_settings.json) {
        new SignalPrinter(&m_recorder, voro::print, this);
    }
    connect(&m_recorder, &AudioRecorder::mediaStateChanged, this, &Recording::onMediaStateChanged);
    connect(&m_recorder, qOverload<unsigned>(&AudioRecorder::durationChanged), this, &Recording::onDurationChanged);
    connect(&m_recorder, qOverload<MediaError::Type, unsigned>(&AudioRecorder::error), this, &Recording::onError);
    connect(&m_recorder, &AudioRecorder::recordingLevelChanged, this, [this](double level) {
        m_level = level;
        refresh();
    });
}

bool Recording::begin()
{
    const auto error = start();
    if (error != MediaError::None) {
        fail(m_settings.file.name + QLatin1String(": ") + recordingProblem(error, m_settings.file.url));
    }
    return error == MediaError::None;
}

bool Recording::limit() const
{
    const QString folder = contextFolder(QStringLiteral("AudioRecorder"));
    const QString message = QStringLiteral("msg::context_parameters\ndat::maxduration::%1\n").arg(*m_settings.length);
    return !folder.isEmpty() && PpsObject::sendMessage(folder + QLatin1String("/control"), message) == 0;
}

MediaError::Type Recording::start()
{
    if (m_line || m_settings.length) {
        if (const auto error = m_recorder.setStatusInterval(ReportInterval); error != MediaError::None) {
            return error;
        }
    }
    if (m_settings.length && !limit()) {
        return MediaError::Internal;
    }
    m_recorder.setAudioChannelConfiguration(m_settings.channels);
    m_recorder.setOutputUrl(m_settings.file.url);
    {
        // Nothing is recorded yet that could be lost.
        const StopSignals::AtOnce atOnce;
        if (const auto error = m_recorder.prepare(); error != MediaError::None) {
            return error;
        }
    }
    return m_recorder.record();
}

void Recording::end()
{
    m_silence.stop();
    m_recorder.disconnect(this);
    connect(&m_recorder, qOverload<unsigned>(&AudioRecorder::durationChanged), this,
            [this](unsigned duration) { m_duration = std::max(m_duration, duration); });
    if (!m_settings.json && !hasFailed() && hold()) {
        // The last report tells how long it became.
        QCoreApplication::processEvents();
    }
    if (const auto error = m_recorder.reset(); error != MediaError::None && !hasFailed()) {
        fail(m_settings.file.name + QLatin1String(": ") + recordingProblem(error, m_settings.file.url));
    }
    // An empty file goes with its recording.
    if (m_settings.json || (hasFailed() && fileSize() == 0)) {
        return;
    }
    const QString summary =
        QStringLiteral("%1: %2, %3").arg(m_settings.file.name, timeText(m_duration), sizeText(fileSize()));
    clearLine();
    print(printable(summary).toUtf8() + '\n');
}

void Recording::onKey(Key key)
{
    if (key == Key::PlayPause) {
        togglePause();
    } else if (key == Key::Quit) {
        finish();
    }
}

void Recording::togglePause()
{
    const auto error = m_recorder.mediaState() == MediaState::Paused ? m_recorder.record() : m_recorder.pause();
    if (error != MediaError::None) {
        report(problemOf(error));
    }
}

void Recording::checkRenderer()
{
    const bool isPaused = m_recorder.mediaState() == MediaState::Paused;
    const auto error = isPaused ? m_recorder.pause() : m_recorder.record();
    if (error != MediaError::None) {
        fail(m_settings.file.name + QLatin1String(": ") + recordingProblem(error, m_settings.file.url));
        finish();
    }
}

bool Recording::hold()
{
    return m_recorder.mediaState() == MediaState::Started && m_recorder.pause() == MediaError::None;
}

void Recording::goOn()
{
    m_recorder.record();
}

void Recording::clearLine()
{
    if (m_line) {
        m_line->clear();
    }
}

void Recording::onDurationChanged(unsigned duration)
{
    m_duration = std::max(m_duration, duration);
    m_silence.start();
    if (m_settings.length && m_duration >= *m_settings.length) {
        finish();
    }
    refresh();
}

void Recording::onMediaStateChanged(MediaState::Type state)
{
    // The renderer has ended it.
    if (state == MediaState::Unprepared) {
        finish();
    }
    refresh();
}

void Recording::onError(MediaError::Type error, unsigned)
{
    fail(QStringLiteral("%1: %2 at %3")
             .arg(m_settings.file.name, recordingProblem(error, m_settings.file.url), timeText(m_duration)));
    finish();
}

qint64 Recording::fileSize() const
{
    return QFileInfo(m_settings.file.url.toLocalFile()).size();
}

void Recording::refresh()
{
    const MediaState::Type state = m_recorder.mediaState();
    if (m_settings.json || (state != MediaState::Started && state != MediaState::Paused)) {
        return;
    }
    const RecordingView view{
        .isPaused = state == MediaState::Paused,
        .duration = m_duration,
        .level = m_level,
        .peak = m_peak.update(m_level, m_time.elapsed()),
        .size = fileSize(),
    };
    if (m_line) {
        m_line->draw(recordingLine(view, TerminalLine::columns()));
    } else if (const QString text = recordingText(view); text != m_text) {
        m_text = text;
        print(text.toUtf8() + QByteArray("  ") + sizeText(view.size).toUtf8() + '\n');
    }
}

} // namespace voro
