#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/* Whole files at once. */

/** Makes a file, or replaces it, and returns its path; ends the test program when that fails. */
QString writeFile(const QString &path, const QByteArray &content);
/** What a file holds; nothing when it is not there. */
QByteArray readFile(const QString &path);

/** A WAV file of silence without tags, 8000 bytes a second. */
QByteArray silentWav(int seconds);
