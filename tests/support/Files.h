#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/* Whole files at once. What fails ends the test program. */

/** Makes a file, or replaces it; its path. */
QString writeFile(const QString &path, const QByteArray &content);
/** What a file holds; nothing when it is not there. */
QByteArray readFile(const QString &path);
