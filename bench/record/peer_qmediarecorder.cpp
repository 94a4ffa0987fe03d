/*
 * The peer QMediaRecorder: "record PATH" answers with the time when it was asked to, "stop" when the file is complete.
 */

#include "Figures.h"
#include "Lines.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QUrl>
#include <QtMultimedia/QAudioInput>
#include <QtMultimedia/QMediaCaptureSession>
#include <QtMultimedia/QMediaFormat>
#include <QtMultimedia/QMediaRecorder>

#include <iostream>
#include <string>

namespace {

QMediaFormat formatOf(const std::string &path)
{
    const bool isOpus = path.ends_with(".opus") || path.ends_with(".ogg");
    QMediaFormat format(isOpus ? QMediaFormat::Ogg : QMediaFormat::Wave);
    format.setAudioCodec(isOpus ? QMediaFormat::AudioCodec::Opus : QMediaFormat::AudioCodec::Wave);
    return format;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QMediaCaptureSession session;
    QAudioInput source;
    QMediaRecorder recorder;
    session.setAudioInput(&source);
    session.setRecorder(&recorder);
    QObject::connect(&recorder, &QMediaRecorder::errorOccurred, [](QMediaRecorder::Error, const QString &text) {
        std::cerr << "QMediaRecorder: " << text.toStdString() << std::endl;
    });
    QObject::connect(&recorder, &QMediaRecorder::recorderStateChanged, [](QMediaRecorder::RecorderState state) {
        if (state == QMediaRecorder::StoppedState) {
            std::cout << bench::now() << std::endl;
        }
    });
    bench::tellReady();
    return bench::obeyLines([&](const std::string &line) {
        if (line == "stop") {
            recorder.stop();
        } else {
            const std::string path = line.substr(line.find(' ') + 1);
            recorder.setMediaFormat(formatOf(path));
            recorder.setAudioSampleRate(48'000);
            recorder.setAudioChannelCount(2);
            recorder.setAudioBitRate(96'000);
            recorder.setOutputLocation(QUrl::fromLocalFile(QString::fromStdString(path)));
            const int64_t asked = bench::now();
            recorder.record();
            std::cout << asked << std::endl;
        }
    });
}
