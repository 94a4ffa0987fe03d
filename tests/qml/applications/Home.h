#pragma once

#include "Media.h"
#include "Rows.h"
#include "XServer.h"

#include <multimedia/MetaData.h>
#include <multimedia/NowPlayingController.h>

#include <QtGui/QGuiApplication>
#include <QtGui/QPainter>
#include <QtTest/QtTest>

inline constexpr int PatienceMs = 20'000;

/** A home folder with music: an album of three songs and its cover, a file that is no music. */
class Home {
public:
    Home()
    {
        qputenv("HOME", m_folder.path().toUtf8());
        qputenv("XDG_RUNTIME_DIR", m_folder.path().toUtf8());
        for (const char *name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"}) {
            qunsetenv(name);
        }
        QDir(m_folder.path()).mkpath("Music/Northern Lights");
        const QStringList titles{"First Frost", "The Long Way Home under a Green Sky", "Harbour"};
        for (int i = 0; i < titles.size(); ++i) {
            media::makeTone(album(QStringLiteral("%1.ogg").arg(i + 1)),
                            {.frequency = 220.0 * (i + 1),
                             .seconds = 90,
                             .tags = {"title=" + titles[i], "artist=The Example Band", "album=Northern Lights"}});
        }
        write("Music/broken.ogg", "This is no music.");
    }
    /** The album's picture: blue above, orange below. */
    void drawCover() const
    {
        QImage cover(400, 400, QImage::Format_RGB32);
        QPainter painter(&cover);
        QLinearGradient sky(0, 0, 0, 400);
        sky.setColorAt(0, QColor(0x14, 0x2c, 0x66));
        sky.setColorAt(0.6, QColor(0xd0, 0x60, 0x50));
        sky.setColorAt(1, QColor(0xf0, 0xa0, 0x30));
        painter.fillRect(cover.rect(), sky);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0xff, 0xe8, 0xb0));
        painter.drawEllipse(QPoint(200, 220), 64, 64);
        painter.setBrush(QColor(0x10, 0x18, 0x30));
        painter.drawPolygon(QPolygon({{0, 330}, {90, 250}, {170, 320}, {280, 230}, {400, 340}, {400, 400}, {0, 400}}));
        painter.end();
        cover.save(album("cover.png"));
    }

    /** As if no application had run yet. */
    void forgetSettings() const { QSettings().clear(); }

    QString path(const QString &name) const { return m_folder.filePath(name); }
    QString album(const QString &name) const { return path(QStringLiteral("Music/Northern Lights/") + name); }

    void write(const QString &name, const QByteArray &content) const
    {
        QFile file(path(name));
        if (!file.open(QFile::WriteOnly) || file.write(content) != content.size()) {
            qFatal("Cannot write %s", qPrintable(name));
        }
    }

private:
    QTemporaryDir m_folder;
};

/** Sees what the now-playing service has been told. */
class Watcher : public voro::multimedia::NowPlayingController {
public:
    QString title() const { return metaData().value(QLatin1String(voro::multimedia::MetaData::Title)).toString(); }

private:
    // While somebody listens the values are kept up to date.
    QSignalSpy m_states{this, &voro::multimedia::NowPlayingController::mediaStateChanged};
    QSignalSpy m_metaData{this, &voro::multimedia::NowPlayingController::metaDataChanged};
    QSignalSpy m_positions{this, qOverload<unsigned>(&voro::multimedia::NowPlayingController::positionChanged)};
};

/** Runs a test of applications, which gets its home folder, with an X server of its own. */
template<typename Test>
int runInHome(int argc, char **argv)
{
    const Home home;
    const XServer screen;
    QGuiApplication application(argc, argv);
    QGuiApplication::setOrganizationName(QStringLiteral("voro"));
    Test test(home);
    return QTest::qExec(&test, argc, argv);
}
