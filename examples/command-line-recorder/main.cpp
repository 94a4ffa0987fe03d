// Records the microphone for some seconds and shows the level.

#include <multimedia/AudioRecorder.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QMetaEnum>
#include <QtCore/QTextStream>
#include <QtCore/QTimer>

using namespace voro::multimedia;

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    const int seconds = argc == 3 ? atoi(argv[2]) : 0;
    if (seconds <= 0) {
        out << "usage: recorder FILE.opus SECONDS\n";
        return 2;
    }
    const auto fail = [&out](MediaError::Type error) {
        out << QMetaEnum::fromType<MediaError::Type>().valueToKey(error) << Qt::endl;
        return 1;
    };

    AudioRecorder recorder;
    recorder.setStatusInterval(100);
    QObject::connect(&recorder, &AudioRecorder::recordingLevelChanged, [&](double level) {
        out << '\r' << recorder.duration() / 1000 << " s " << QString(qRound(level * 40), '#').leftJustified(40)
            << Qt::flush;
    });
    QObject::connect(&recorder, qOverload<MediaError::Type, unsigned>(&AudioRecorder::error),
                     [&](MediaError::Type error) { QCoreApplication::exit(fail(error)); });
    // The file is complete when reset() returns.
    QTimer::singleShot(seconds * 1000, &recorder, [&] {
        const auto error = recorder.reset();
        out << Qt::endl;
        QCoreApplication::exit(error == MediaError::None ? 0 : fail(error));
    });

    recorder.setOutputUrl(QUrl::fromLocalFile(QString::fromLocal8Bit(argv[1])));
    if (const auto error = recorder.record(); error != MediaError::None) {
        return fail(error);
    }
    return QCoreApplication::exec();
}
