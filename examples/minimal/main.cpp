// Plays one medium and prints what it is and where it is: a complete application in one function.

#include <multimedia/MediaPlayer.h>
#include <multimedia/MetaData.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QMetaEnum>
#include <QtCore/QTextStream>

using namespace voro::multimedia;

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    if (argc != 2) {
        out << "usage: player FILE\n";
        return 2;
    }
    const auto nameOf = [](MediaError::Type error) {
        return QString::fromLatin1(QMetaEnum::fromType<MediaError::Type>().valueToKey(error));
    };

    MediaPlayer player;
    QObject::connect(&player, &MediaPlayer::metaDataChanged, [&](const QVariantMap &metaData) {
        out << metaData.value(QLatin1String(MetaData::Title)).toString() << " by "
            << metaData.value(QLatin1String(MetaData::Artist)).toString() << Qt::endl;
    });
    QObject::connect(&player, qOverload<unsigned>(&MediaPlayer::positionChanged),
                     [&](unsigned position) { out << position << " of " << player.duration() << " ms" << Qt::endl; });
    QObject::connect(&player, &MediaPlayer::playbackCompleted, &application, &QCoreApplication::quit);
    QObject::connect(&player, qOverload<MediaError::Type, unsigned>(&MediaPlayer::error),
                     [&](MediaError::Type error, unsigned position) {
                         out << nameOf(error) << " at " << position << " ms" << Qt::endl;
                         QCoreApplication::exit(1);
                     });

    player.setSourceUrl(QUrl::fromLocalFile(QString::fromLocal8Bit(argv[1])));
    if (const auto error = player.play(); error != MediaError::None) {
        out << nameOf(error) << Qt::endl;
        return 1;
    }
    return QCoreApplication::exec();
}
