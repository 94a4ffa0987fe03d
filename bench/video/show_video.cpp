/* Shows a video in a window with this project's QML module or with Qt's. Arguments: "ours" or "qt", a file, two numbers.
   Tells on standard output when the first picture was drawn, and when so many had come; ends with its input. */

#include "Figures.h"
#include "Lines.h"

#include <QtCore/QUrl>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickView>

#include <cstdlib>

namespace {

constexpr char Ours[] = R"(
import QtQuick
import voro.multimedia
Item {
    id: scene
    required property url file
    property int pictures: 0
    VideoWindow { id: video; anchors.fill: parent; onPictureChanged: ++scene.pictures }
    MediaPlayer {
        sourceUrl: scene.file
        windowId: video.windowId
        videoOutput: VideoOutput.PrimaryDisplay
        Component.onCompleted: play()
    }
}
)";

constexpr char Qts[] = R"(
import QtQuick
import QtMultimedia
Item {
    id: scene
    required property url file
    property int pictures: 0
    VideoOutput { id: video; anchors.fill: parent }
    Connections { target: video.videoSink; function onVideoFrameChanged() { ++scene.pictures } }
    MediaPlayer {
        source: scene.file
        audioOutput: AudioOutput {}
        videoOutput: video
        Component.onCompleted: play()
    }
}
)";

void dropMessage(QtMsgType, const QMessageLogContext &, const QString &) {}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    if (argc != 5)
        return 2;
    // The library tells that each medium was tried as a playlist first.
    qInstallMessageHandler(dropMessage);
    QQuickView view;
    view.engine()->addImportPath(QStringLiteral(MODULES));
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.resize(1280, 720);
    QQmlComponent component(view.engine());
    component.setData(argv[1] == std::string("ours") ? Ours : Qts, QUrl());
    QObject *scene =
        component.createWithInitialProperties({{"file", QUrl::fromLocalFile(QString::fromLocal8Bit(argv[2]))}});
    if (!scene) {
        std::cerr << component.errorString().toStdString() << std::endl;
        return 1;
    }
    QList<int> counts{1, std::atoi(argv[3]), std::atoi(argv[4])};
    QObject::connect(&view, &QQuickWindow::frameSwapped, scene, [scene, &counts] {
        while (!counts.isEmpty() && scene->property("pictures").toInt() >= counts.first()) {
            counts.removeFirst();
            std::cout << bench::now() << std::endl;
        }
    });
    view.setContent(QUrl(), nullptr, scene);
    view.show();
    return bench::obeyLines([](const std::string &) {});
}
