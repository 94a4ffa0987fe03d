#include <QtCore/QDir>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlApplicationEngine>

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral(VORO_QML_DIR));
    if (argc > 1) {
        engine.setInitialProperties(
            {{QStringLiteral("medium"), QUrl::fromUserInput(application.arguments().at(1), QDir::currentPath())}});
    }
    engine.load(QUrl(QStringLiteral("qrc:/example/player/Main.qml")));
    return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}
