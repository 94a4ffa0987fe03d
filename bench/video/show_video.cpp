/*
 * Shows a video in a window: "ours" is a program of a few lines with this project's QML module, "player" the
 * application Player, "qt" a program of a few lines with Qt's module. Arguments: one of these, a file, two numbers, the
 * film's width and height. Tells on standard output when the first picture was drawn, and when so many had come; ends
 * with its input.
 */

#include "Figures.h"
#include "Lines.h"

#include <QtCore/QUrl>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlApplicationEngine>
#include <QtQml/QQmlComponent>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickView>
#include <QtQuickControls2/QQuickStyle>

#include <Application.h>

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

constexpr char Counter[] = R"(
import QtQml
QtObject {
    id: counter
    required property QtObject video
    property int pictures: 0
    readonly property Connections connections: Connections {
        target: counter.video
        function onPictureChanged() { ++counter.pictures }
    }
}
)";

/** Makes what a text of QML describes; ends the program when that fails. */
QObject *make(QQmlEngine &engine, const char *text, const QVariantMap &properties)
{
    QQmlComponent component(&engine);
    component.setData(text, QUrl());
    QObject *made = component.createWithInitialProperties(properties);
    if (!made) {
        std::cerr << component.errorString().toStdString() << std::endl;
        std::exit(1);
    }
    return made;
}

/** What shows the pictures in a window of the application. */
QObject *videoIn(QQuickItem *item)
{
    if (item->inherits("voro::qml::VideoWindow")) {
        return item;
    }
    for (QQuickItem *child : item->childItems()) {
        if (QObject *found = videoIn(child)) {
            return found;
        }
    }
    return nullptr;
}

/** Tells when so many pictures, which `counter` counts, were drawn. */
void tellPictures(QQuickWindow *window, QObject *counter, QList<int> counts)
{
    QObject::connect(window, &QQuickWindow::frameSwapped, counter, [counter, counts]() mutable {
        while (!counts.isEmpty() && counter->property("pictures").toInt() >= counts.first()) {
            counts.removeFirst();
            std::cout << bench::now() << std::endl;
        }
    });
}

void dropMessage(QtMsgType, const QMessageLogContext &, const QString &) {}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    if (argc != 7) {
        return 2;
    }
    // The library tells that each medium was tried as a playlist first.
    qInstallMessageHandler(dropMessage);
    const QList<int> counts{1, std::atoi(argv[3]), std::atoi(argv[4])};
    const QUrl file = QUrl::fromLocalFile(QString::fromLocal8Bit(argv[2]));
    if (argv[1] == std::string("player")) {
        // As the application itself does.
        QQuickStyle::setStyle(QStringLiteral("Basic"));
        QQmlApplicationEngine engine;
        engine.addImportPath(QStringLiteral(MODULES));
        if (!application::show(engine, QStringLiteral("voro.player"), {{"operands", QVariantList{file}}})) {
            return 1;
        }
        auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
        const QVariant video = QVariant::fromValue(videoIn(window->contentItem()));
        tellPictures(window, make(engine, Counter, {{"video", video}}), counts);
        return bench::obeyLines([](const std::string &) {});
    }
    QQuickView view;
    view.engine()->addImportPath(QStringLiteral(MODULES));
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.resize(std::atoi(argv[5]), std::atoi(argv[6]));
    QObject *scene = make(*view.engine(), argv[1] == std::string("ours") ? Ours : Qts, {{"file", file}});
    tellPictures(&view, scene, counts);
    view.setContent(QUrl(), nullptr, scene);
    view.show();
    return bench::obeyLines([](const std::string &) {});
}
