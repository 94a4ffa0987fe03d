#pragma once

#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <gst/gst.h>

namespace voro::renderer {

/**
 * Starts GStreamer with a few plugins alone: for each 2048 names GLib leaves a table behind, which a sanitizer reports,
 * and the plugins of a machine decide how many there are.
 */
inline void startGStreamerWith(const QTemporaryDir &folder, const QStringList &plugins)
{
    qputenv("GST_REGISTRY", folder.filePath(QStringLiteral("registry")).toLocal8Bit());
    qputenv("GST_PLUGIN_SYSTEM_PATH", folder.path().toLocal8Bit());
    for (const QString &plugin : plugins) {
        const QString name = QStringLiteral("libgst%1.so").arg(plugin);
        QVERIFY(QFile::link(QStringLiteral(GSTREAMER_PLUGINS "/") + name, folder.filePath(name)));
    }
    gst_init(nullptr, nullptr);
}

} // namespace voro::renderer
