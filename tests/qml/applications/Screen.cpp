#include "Screen.h"

#include "Application.h"

#include <QtGui/QAccessible>
#include <QtQuick/QQuickWindow>
#include <QtTest/QtTest>

#include <utility>

namespace {

bool isNamed(QAccessibleInterface *item, const QString &name)
{
    const QString own = item->text(QAccessible::Name);
    return name.endsWith(QLatin1Char('*')) ? own.startsWith(name.chopped(1)) : own == name;
}

QAccessibleInterface *findBelow(QAccessibleInterface *item, const QString &name)
{
    if (!item || !item->isValid() || item->state().invisible) {
        return nullptr;
    }
    // What is on top comes last.
    for (int i = item->childCount(); i-- > 0;) {
        if (QAccessibleInterface *found = findBelow(item->child(i), name)) {
            return found;
        }
    }
    return item->role() != QAccessible::Window && isNamed(item, name) ? item : nullptr;
}

} // namespace

Screen::Screen(const char *uri, const QVariantMap &properties)
{
    QAccessible::setActive(true);
    if (application::show(m_engine, QString::fromLatin1(uri), properties)) {
        m_window = qobject_cast<QQuickWindow *>(m_engine.rootObjects().constFirst());
    }
    if (!m_window) {
        qFatal("%s has no window", uri);
    }
    m_window->requestActivate();
    if (!QTest::qWaitForWindowActive(m_window, 20'000)) {
        qFatal("The window of %s does not come up", uri);
    }
}

void Screen::resize(int width, int height)
{
    m_window->resize(width, height);
}

QAccessibleInterface *Screen::find(const QString &name) const
{
    return findBelow(QAccessible::queryAccessibleInterface(m_window), name);
}

bool Screen::isChecked(const QString &name) const
{
    QAccessibleInterface *item = find(name);
    return item && item->state().checked;
}

QRect Screen::place(const QString &name) const
{
    QAccessibleInterface *item = find(name);
    return item ? item->rect().translated(-m_window->position()) : QRect();
}

QRect Screen::settledPlace(const QString &name) const
{
    QRect settled;
    // What has just come may move with the next picture.
    const bool isSettled = QTest::qWaitFor(
        [&] {
            QSignalSpy shown(m_window, &QQuickWindow::frameSwapped);
            m_window->update();
            shown.wait(1000);
            const QRect before = std::exchange(settled, place(name));
            return !settled.isEmpty() && settled == before;
        },
        20'000);
    return isSettled ? settled : QRect();
}

QRgb Screen::colourAt(const QString &name, QPoint offset) const
{
    const QRect item = settledPlace(name);
    return picture().pixel(offset.x() >= 0 ? item.left() + offset.x() : item.right() + offset.x(),
                           offset.y() >= 0 ? item.top() + offset.y() : item.bottom() + offset.y());
}

bool Screen::click(const QString &name)
{
    const QRect item = settledPlace(name);
    if (!item.isEmpty()) {
        QTest::mouseClick(m_window, Qt::LeftButton, {}, item.center());
    }
    return !item.isEmpty();
}

bool Screen::drag(const QString &name, double to)
{
    const QRect bar = settledPlace(name);
    if (bar.isEmpty()) {
        return false;
    }
    const QPoint target(bar.left() + static_cast<int>(bar.width() * to), bar.center().y());
    QTest::mousePress(m_window, Qt::LeftButton, {}, QPoint(bar.left() + 12, target.y()));
    QTest::mouseMove(m_window, target);
    QTest::mouseRelease(m_window, Qt::LeftButton, {}, target);
    return true;
}

bool Screen::carry(const QString &name, const QString &onto)
{
    constexpr int Steps = 8;
    const QPoint from = settledPlace(name).center();
    const QPoint to = settledPlace(onto).center();
    if (from.isNull() || to.isNull()) {
        return false;
    }
    QTest::mousePress(m_window, Qt::LeftButton, {}, from);
    for (int i = 1; i <= Steps; ++i) {
        QTest::mouseMove(m_window, from + (to - from) * i / Steps);
    }
    QTest::mouseRelease(m_window, Qt::LeftButton, {}, to);
    return true;
}

void Screen::press(Qt::Key key)
{
    QTest::keyClick(m_window, key);
}

void Screen::type(const QString &text)
{
    for (const QChar letter : text) {
        QTest::sendKeyEvent(QTest::Click, m_window, Qt::Key_unknown, letter, {});
    }
}

QImage Screen::picture() const
{
    return m_window->grabWindow().convertToFormat(QImage::Format_RGB32);
}

bool Screen::keepPicture(const QString &name) const
{
    const QString folder = qEnvironmentVariable("VORO_PICTURES", QStringLiteral(PICTURES));
    const QString file = QDir(folder).filePath(name);
    return QDir().mkpath(QFileInfo(file).path()) && picture().save(file);
}
