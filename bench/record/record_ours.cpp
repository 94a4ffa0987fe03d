/* Our recorder: "record PATH" answers with the time when it was asked to, "stop" when the file is complete. */

#include "Figures.h"
#include "Lines.h"

#include <multimedia/AudioRecorder.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QUrl>

#include <cstdlib>
#include <iostream>
#include <string>

using namespace voro::multimedia;

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    AudioRecorder recorder;
    const auto check = [](MediaError::Type error) {
        if (error != MediaError::None) {
            std::cerr << "recorder: error " << static_cast<int>(error) << std::endl;
            std::exit(1);
        }
    };
    bench::tellReady();
    return bench::obeyLines([&](const std::string &line) {
        if (line == "stop") {
            check(recorder.reset());
            std::cout << bench::now() << std::endl;
        } else {
            const std::string path = line.substr(line.find(' ') + 1);
            recorder.setOutputUrl(QUrl::fromLocalFile(QString::fromStdString(path)));
            const int64_t asked = bench::now();
            check(recorder.record());
            std::cout << asked << std::endl;
        }
    });
}
