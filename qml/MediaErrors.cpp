#include "MediaErrors.h"

#include <QtCore/QMetaEnum>

namespace voro::qml {

using voro::multimedia::MediaError;

QString MediaErrors::text(int error) const
{
    switch (MediaError::Type(error)) {
    case MediaError::None:
        return {};
    case MediaError::Internal:
        return tr("The player failed unexpectedly.");
    case MediaError::InvalidParameter:
        return tr("This value cannot be used.");
    case MediaError::InvalidState:
        return tr("This is not possible at the moment.");
    case MediaError::UnsupportedValue:
        return tr("This value is not supported here.");
    case MediaError::UnsupportedMediaType:
        return tr("This kind of media cannot be played.");
    case MediaError::UnsupportedOperation:
        return tr("The medium does not allow this.");
    case MediaError::Read:
        return tr("The medium could not be read.");
    case MediaError::Write:
        return tr("The recording could not be written.");
    case MediaError::SourceUnavailable:
        return tr("The medium was not found or does not answer.");
    case MediaError::ResourceCorrupted:
        return tr("The medium is damaged.");
    case MediaError::OutputUnavailable:
        return tr("The output cannot be used.");
    case MediaError::OutOfMemory:
        return tr("There is not enough memory.");
    case MediaError::ResourceUnavailable:
        return tr("Something that is needed is missing or in use.");
    case MediaError::Permission:
        return tr("This is not permitted.");
    case MediaError::CommandFailed:
        return tr("The player refused this.");
    }
    return tr("An unknown error happened (%1).").arg(error);
}

QString MediaErrors::name(int error) const
{
    return QString::fromLatin1(QMetaEnum::fromType<MediaError::Type>().valueToKey(error));
}

} // namespace voro::qml
