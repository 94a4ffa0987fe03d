#include "Application.h"
#include "Daemon.h"
#include "Home.h"
#include "Screen.h"

#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

namespace {

bool isOfType(const QObject *object, const char *type)
{
    for (auto meta = object->metaObject(); meta; meta = meta->superClass()) {
        if (QByteArray(meta->className()).startsWith(type)) {
            return true;
        }
    }
    return false;
}

/** The texts that are shown and do not fit. */
QStringList cutTexts(const QQuickItem *item, const QRectF &window)
{
    QStringList texts;
    if (!item->isVisible() || item->opacity() == 0) {
        return texts;
    }
    if (isOfType(item, "QQuickText") && !item->property("text").toString().isEmpty()) {
        const QRectF place = item->mapRectToScene(item->boundingRect());
        const bool isCut = item->property("truncated").toBool()
                           || item->property("contentWidth").toReal() > item->width() + 1
                           || place.left() < window.left() - 1 || place.right() > window.right() + 1;
        if (isCut) {
            texts += item->property("text").toString();
        }
    }
    for (const QQuickItem *child : item->childItems()) {
        texts += cutTexts(child, window);
    }
    return texts;
}

} // namespace

/** In every language every text of the windows and of all their sheets has its room, on a phone and in wide windows. */
class tst_Languages : public QObject {
    Q_OBJECT
public:
    explicit tst_Languages(const Home &home) : m_home(home) {}

private Q_SLOTS:
    void initTestCase() { QVERIFY(m_daemon.start({"VORO_AUDIO_SINK=fakesink sync=true"})); }
    void init() { m_home.forgetSettings(); }

    void texts_haveTheirRoom_data()
    {
        const Rows<QString, QString, double, QSize> row("language", "uri", "scale", "size");
        constexpr QSize Phone(360, 640);
        constexpr QSize Wide(1280, 800);
        const QDir translations(":/voro/translations");
        QCOMPARE(translations.count(), 9U);
        for (const QByteArray uri : {"voro.player", "voro.recorder", "voro.remote"}) {
            for (const QString &file : QStringList{"voro_en.qm"} + translations.entryList()) {
                const QString language = file.chopped(3).mid(5);
                row(language.toLatin1() + ' ' + uri, language, uri, 1.0, Phone);
            }
            row("large texts, " + uri, "de", uri, 2.0, Phone);
            row("wide, " + uri, "de", uri, 1.0, Wide);
            row("wide from right to left, " + uri, "ar", uri, 1.0, Wide);
        }
    }

    void texts_haveTheirRoom()
    {
        QFETCH(QString, language);
        QFETCH(QString, uri);
        QFETCH(double, scale);
        QFETCH(QSize, size);
        QSettings().setValue("window/scale", scale);
        QSettings().setValue("window/width", size.width());
        QSettings().setValue("window/height", size.height());
        application::translate({QString(language).replace('_', '-')});
        QCOMPARE(QGuiApplication::layoutDirection(), language == "ar" ? Qt::RightToLeft : Qt::LeftToRight);
        Screen screen(qPrintable(uri));
        QQuickWindow *window = screen.window();
        const auto cut = [&] {
            screen.picture();
            return cutTexts(window->contentItem(), QRectF(QPointF(), window->size()));
        };
        const auto keepPicture = [&](const QString &page) {
            const QString form = QStringLiteral("%1/%2-%3-%4").arg(language, uri).arg(scale).arg(size.width());
            return screen.keepPicture(QStringLiteral("%1-%2.png").arg(form, page));
        };
        QCOMPARE(window->size(), size);
        QTRY_COMPARE(cut().join('\n'), QString());
        QVERIFY(keepPicture("page"));

        int sheets = 0;
        for (QObject *object : window->findChildren<QObject *>()) {
            if (!isOfType(object, "LazySheet_QML")) {
                continue;
            }
            ++sheets;
            QVERIFY(QMetaObject::invokeMethod(object, "open"));
            QObject *sheet = object->property("item").value<QObject *>();
            QVERIFY(sheet);
            QTRY_VERIFY(sheet->property("opened").toBool());
            QTRY_COMPARE(cut().join('\n'), QString());
            QVERIFY(keepPicture(object->property("sheet").toUrl().fileName().section('.', 0, 0)));
            QVERIFY(QMetaObject::invokeMethod(sheet, "close"));
            QTRY_VERIFY(!sheet->property("visible").toBool());
        }
        QVERIFY(sheets >= 3);
    }

private:
    const Home &m_home;
    Daemon m_daemon{Daemon::Later};
};

int main(int argc, char *argv[])
{
    return runInHome<tst_Languages>(argc, argv);
}

#include "tst_languages.moc"
