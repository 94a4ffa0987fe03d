#include "MediaErrors.h"

#include <QtCore/QMetaEnum>

#include <words/ErrorWords.h>

namespace voro::qml {

QString MediaErrors::text(int error) const
{
    return errorSentence(error);
}

QString MediaErrors::text(int error, const QUrl &medium) const
{
    return errorSentence(error, medium);
}

QString MediaErrors::recordingText(int error, const QUrl &file) const
{
    return recordingSentence(error, file);
}

QString MediaErrors::name(int error) const
{
    return QString::fromLatin1(QMetaEnum::fromType<multimedia::MediaError::Type>().valueToKey(error));
}

} // namespace voro::qml
