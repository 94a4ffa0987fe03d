#pragma once

#include <QtCore/QString>
#include <QtCore/QVariantMap>

class QQmlApplicationEngine;

namespace application {

struct Description {
    QString program;  ///< as it is called on the command line
    QString id;       ///< of the desktop file, on the session bus
    QString name;     ///< as people know it
    QString summary;  ///< a sentence for --help
    QString operands; ///< what may follow the options, as --help shows it; empty when nothing may
    QString uri;      ///< the QML module whose Main is the window
};

/**
 * Runs an application: reads the command line, finds the modules, shows the window. The operands become the window's
 * `operands`, a list of URLs; where the application runs already they go to its window, which emits `received`.
 *
 * @return the exit status: 2 for an unusable command line, 1 when there is no window.
 */
int run(int &argc, char **argv, const Description &description);

/** Speaks the first of these languages (as "pt-BR") that there is a translation for, else English. */
void translate(const QStringList &languages);

/** Shows the window of an application: Main of its module, with properties. False when it cannot be made. */
bool show(QQmlApplicationEngine &engine, const QString &uri, const QVariantMap &properties);

} // namespace application
