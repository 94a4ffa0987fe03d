#include "ErrorWords.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtCore/QStorageInfo>

namespace voro {

using multimedia::MediaError;

namespace {

struct ErrorWords {
    Q_DECLARE_TR_FUNCTIONS(ErrorWords)
};

/** What is left on a full disk may be less than one write takes. */
constexpr qint64 LeastSpace = 64 * 1024;

} // namespace

QString errorSentence(int error)
{
    switch (static_cast<MediaError::Type>(error)) {
    case MediaError::None:
        return {};
    case MediaError::Internal:
        return ErrorWords::tr("The player failed unexpectedly.");
    case MediaError::InvalidParameter:
        return ErrorWords::tr("This value cannot be used.");
    case MediaError::InvalidState:
        return ErrorWords::tr("This is not possible at the moment.");
    case MediaError::UnsupportedValue:
        return ErrorWords::tr("This value is not supported here.");
    case MediaError::UnsupportedMediaType:
        return ErrorWords::tr("This kind of media cannot be played.");
    case MediaError::UnsupportedOperation:
        return ErrorWords::tr("The medium does not allow this.");
    case MediaError::Read:
        return ErrorWords::tr("The medium could not be read.");
    case MediaError::Write:
        return ErrorWords::tr("The recording could not be written.");
    case MediaError::SourceUnavailable:
        return ErrorWords::tr("The medium was not found or does not answer.");
    case MediaError::ResourceCorrupted:
        return ErrorWords::tr("The medium is damaged.");
    case MediaError::OutputUnavailable:
        return ErrorWords::tr("The output cannot be used.");
    case MediaError::OutOfMemory:
        return ErrorWords::tr("There is not enough memory.");
    case MediaError::ResourceUnavailable:
        return ErrorWords::tr("Something that is needed is missing or in use.");
    case MediaError::Permission:
        return ErrorWords::tr("This is not permitted.");
    case MediaError::CommandFailed:
        return ErrorWords::tr("The player refused this.");
    }
    return ErrorWords::tr("An unknown error happened (%1).").arg(error);
}

QString errorSentence(int error, const QUrl &medium)
{
    const QFileInfo file(medium.toLocalFile());
    if (error == MediaError::None || !medium.isLocalFile()) {
        return errorSentence(error);
    }
    if (!file.exists()) {
        return ErrorWords::tr("There is no such file.");
    }
    if (file.isDir()) {
        return ErrorWords::tr("This is a folder, not a medium.");
    }
    if (!file.isReadable()) {
        return ErrorWords::tr("You may not read this file.");
    }
    if (error == MediaError::SourceUnavailable) {
        return ErrorWords::tr("The sound server does not answer, or what this file leads to is missing.");
    }
    return file.isFile() && file.size() == 0 ? ErrorWords::tr("The file is empty.") : errorSentence(error);
}

QString recordingSentence(int error, const QUrl &file)
{
    const QString path = file.toLocalFile();
    const QFileInfo folder(QFileInfo(path).path());
    // A recording has no other source than the microphone, and no other output than its file.
    if (error == MediaError::SourceUnavailable) {
        return ErrorWords::tr("There is no microphone, or the sound server does not answer.");
    }
    if (error == MediaError::UnsupportedMediaType) {
        return ErrorWords::tr("The name of a recording ends in .wav, .ogg, .opus, .flac, .mp3, .m4a or .amr.");
    }
    if (error == MediaError::OutputUnavailable && !folder.isDir()) {
        return ErrorWords::tr("There is no such folder.");
    }
    if (error == MediaError::Permission && !QFileInfo::exists(path)) {
        return ErrorWords::tr("You may not write in this folder.");
    }
    if (error == MediaError::Write && QStorageInfo(folder.filePath()).bytesAvailable() < LeastSpace) {
        return ErrorWords::tr("The disk is full.");
    }
    return errorSentence(error);
}

} // namespace voro
