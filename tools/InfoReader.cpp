#include "InfoReader.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QJsonDocument>

namespace voro {

InfoReader::~InfoReader()
{
    disconnect();
    kill();
    waitForFinished();
}

void InfoReader::read(const QString &path)
{
    setStandardInputFile(path);
    start(QCoreApplication::applicationDirPath() + QLatin1String("/" VORO_HELPERS "/voro-info"), {});
}

QJsonObject InfoReader::result()
{
    return QJsonDocument::fromJson(readAllStandardOutput()).object();
}

} // namespace voro
