#include "Application.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QDir>
#include <QtCore/QUrl>
#include <QtGui/QGuiApplication>
#include <QtGui/QIcon>
#include <QtQml/QQmlApplicationEngine>
#include <QtQuickControls2/QQuickStyle>

#include <cstdio>

namespace application {

namespace {

QVariantList toUrls(const QStringList &operands)
{
    QVariantList urls;
    for (const QString &operand : operands) {
        urls += QUrl::fromUserInput(operand, QDir::currentPath(), QUrl::AssumeLocalFile);
    }
    return urls;
}

/** Reads the command line into the window's properties; returns why it is unusable, empty when it is not. */
QString read(const QStringList &arguments, const Description &description, QVariantMap &properties)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(description.summary);
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption dark(QStringLiteral("dark"), QStringLiteral("Dark colours, whatever the system has."));
    const QCommandLineOption light(QStringLiteral("light"), QStringLiteral("Light colours, whatever the system has."));
    parser.addOptions({dark, light});
    if (!description.operands.isEmpty()) {
        parser.addPositionalArgument(description.operands, QString(), description.operands);
    }
    if (!parser.parse(arguments)) {
        return parser.errorText();
    }
    if (parser.isSet(help)) {
        parser.showHelp();
    }
    if (parser.isSet(dark) && parser.isSet(light)) {
        return QStringLiteral("It is either --dark or --light.");
    }
    if (parser.isSet(dark) || parser.isSet(light)) {
        properties.insert(QStringLiteral("colours"), parser.isSet(dark) ? dark.names().first() : light.names().first());
    }

    const QStringList operands = parser.positionalArguments();
    if (description.operands.isEmpty() && !operands.isEmpty()) {
        return QStringLiteral("'%1' is too much.").arg(operands.first());
    }
    if (!operands.isEmpty()) {
        properties.insert(QStringLiteral("operands"), toUrls(operands));
    }
    return {};
}

} // namespace

bool show(QQmlApplicationEngine &engine, const QString &uri, const QVariantMap &properties)
{
    engine.addImportPath(QStringLiteral("qrc:/"));
    engine.addImportPath(QCoreApplication::applicationDirPath() + QStringLiteral("/" VORO_QML_MODULES));
    engine.setInitialProperties(properties);
    engine.load(QUrl(QStringLiteral("qrc:/%1/Main.qml").arg(QString(uri).replace(QLatin1Char('.'), QLatin1Char('/')))));
    return !engine.rootObjects().isEmpty();
}

int run(int &argc, char **argv, const Description &description)
{
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(description.id);
    QGuiApplication::setOrganizationName(QStringLiteral("voro"));
    QGuiApplication::setApplicationDisplayName(description.name);
    QGuiApplication::setDesktopFileName(description.id);
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    QGuiApplication::setWindowIcon(QIcon::fromTheme(description.id));

    QVariantMap properties;
    if (const QString problem = read(QGuiApplication::arguments(), description, properties); !problem.isEmpty()) {
        std::fprintf(stderr, "%s: %s\n", qUtf8Printable(description.id), qUtf8Printable(problem));
        return 2;
    }
    QQmlApplicationEngine engine;
    return show(engine, description.uri, properties) ? QGuiApplication::exec() : 1;
}

} // namespace application
