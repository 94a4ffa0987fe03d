#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QStringList>

#include <optional>

/** What a program writes before it ends; nothing, and a warning, when it fails. Its errors go where the test's go. */
std::optional<QByteArray> runToEnd(const QString &program, const QStringList &arguments, const QString &folder = {});

/** What is heard in a file: 16-bit mono samples; nothing when it cannot be read. */
QByteArray decoded(const QString &file, int rate = 48'000);
