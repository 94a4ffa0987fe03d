#include "Daemon.h"

#include <QtQml/QQmlEngine>
#include <QtQuickTest/quicktest.h>

/** The module as an application sees it, with a daemon of its own. */
class Setup : public QObject {
    Q_OBJECT
public:
    Setup()
    {
        if (!m_daemon.start({QStringLiteral("VORO_AUDIO_SINK=fakesink sync=true"),
                             QStringLiteral("VORO_AUDIO_SOURCE=audiotestsrc is-live=true")})) {
            qFatal("vorod does not start");
        }
    }

public Q_SLOTS:
    void qmlEngineAvailable(QQmlEngine *engine) { engine->addImportPath(QStringLiteral(MODULES)); }

private:
    Daemon m_daemon{Daemon::Later};
};

QUICK_TEST_MAIN_WITH_SETUP(module, Setup)

#include "main.moc"
