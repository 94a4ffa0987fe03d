#include "Application.h"

#include "EndSignals.h"
#include "Instance.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QDir>
#include <QtCore/QLocale>
#include <QtCore/QLoggingCategory>
#include <QtCore/QTranslator>
#include <QtCore/QUrl>
#include <QtGui/QGuiApplication>
#include <QtGui/QIcon>
#include <QtQml/QQmlApplicationEngine>
#include <QtQuick/QQuickWindow>
#include <QtQuickControls2/QQuickStyle>

#include <cstdio>

namespace application {

namespace {

QList<QUrl> toUrls(const QStringList &operands)
{
    QList<QUrl> urls;
    for (const QString &operand : operands) {
        urls += QUrl::fromUserInput(operand, QDir::currentPath(), QUrl::AssumeLocalFile);
    }
    return urls;
}

/** Reads the command line into the window's properties; returns why it is unusable, empty when it is not. */
QString read(const QStringList &arguments, const Description &description, QVariantMap &properties,
             QList<QUrl> &operandUrls)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(description.summary);
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    const QCommandLineOption dark(QStringLiteral("dark"), QStringLiteral("Dark colours, whatever the system has."));
    const QCommandLineOption light(QStringLiteral("light"), QStringLiteral("Light colours, whatever the system has."));
    parser.addOptions({dark, light});
    if (!description.operands.isEmpty()) {
        parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("What is opened at the start."),
                                     description.operands);
    }
    if (!parser.parse(arguments)) {
        return parser.errorText();
    }
    if (parser.isSet(help)) {
        parser.showHelp();
    }
    if (parser.isSet(version)) {
        parser.showVersion();
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
    operandUrls = toUrls(operands);
    return {};
}

QVariantList toVariants(const QList<QUrl> &urls)
{
    return {urls.cbegin(), urls.cend()};
}

void receive(QQmlApplicationEngine &engine, const QList<QUrl> &urls)
{
    const auto window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    if (!window) {
        return;
    }
    if (!urls.isEmpty()) {
        QMetaObject::invokeMethod(window, "received", Q_ARG(QVariant, toVariants(urls)));
    }
    window->show();
    window->raise();
    window->requestActivate();
}

void closeWindow(QQmlApplicationEngine &engine)
{
    if (const auto window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0))) {
        window->close();
    }
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

void translate(const QStringList &languages)
{
    static QTranslator translator;
    for (const QString &language : languages) {
        const QLocale locale(language);
        if (locale.language() == QLocale::English || locale.language() == QLocale::C) {
            break;
        }
        if (translator.load(locale, QStringLiteral("voro"), QStringLiteral("_"),
                            QStringLiteral(":/voro/translations"))) {
            QCoreApplication::installTranslator(&translator);
            QGuiApplication::setLayoutDirection(locale.textDirection());
            return;
        }
    }
    QCoreApplication::removeTranslator(&translator);
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
}

int run(int &argc, char **argv, const Description &description)
{
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(description.program);
    QGuiApplication::setApplicationVersion(QStringLiteral(VORO_VERSION));
    QGuiApplication::setOrganizationName(QStringLiteral("voro"));
    QGuiApplication::setApplicationDisplayName(description.name);
    QGuiApplication::setDesktopFileName(description.id);
    // What commands return is told in the window; each file would leave a line of the library behind.
    if (qgetenv("VOROMULTIMEDIA_LOG_DEBUG") != "1") {
        QLoggingCategory::setFilterRules(QStringLiteral("default.critical=false"));
    }
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    QGuiApplication::setWindowIcon(QIcon::fromTheme(description.id));
    translate(QLocale().uiLanguages());

    QVariantMap properties;
    QList<QUrl> operands;
    const QString problem = read(QGuiApplication::arguments(), description, properties, operands);
    if (!problem.isEmpty()) {
        std::fprintf(stderr, "%s: %s\n", qUtf8Printable(description.program), qUtf8Printable(problem));
        return 2;
    }
    Instance instance(description.id);
    if (instance.handsOver(operands)) {
        return 0;
    }
    if (!operands.isEmpty()) {
        properties.insert(QStringLiteral("operands"), toVariants(operands));
    }
    const EndSignals endSignals;
    QQmlApplicationEngine engine;
    QObject::connect(&instance, &Instance::asked, &engine, [&engine](const auto &urls) { receive(engine, urls); });
    QObject::connect(&instance, &Instance::quitAsked, &engine, [&engine] { closeWindow(engine); });
    return show(engine, description.uri, properties) ? QGuiApplication::exec() : 1;
}

} // namespace application
