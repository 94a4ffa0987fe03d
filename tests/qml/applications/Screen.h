#pragma once

#include <QtCore/QString>
#include <QtGui/QImage>
#include <QtQml/QQmlApplicationEngine>

class QAccessibleInterface;
class QQuickWindow;

/**
 * An application's window, as somebody uses it who sees names instead of pictures: all is found as by a screen reader.
 */
class Screen {
public:
    /** Shows the application whose module is `uri`; ends the test program when there is no window. */
    explicit Screen(const char *uri, const QVariantMap &properties = {});

    QQuickWindow *window() const { return m_window; }
    void resize(int width, int height);

    /** Whether something of that name is shown; a name that ends with `*` is the beginning of one. */
    bool shows(const QString &name) const { return find(name) != nullptr; }
    /** Whether what has that name, and can be checked, is. */
    bool isChecked(const QString &name) const;
    /** Where it is in the window, empty when it is not shown. */
    QRect place(const QString &name) const;

    // These wait for what they need to be shown, and are false when it does not come.

    bool click(const QString &name);
    /** Presses at one end of what has that name, moves to a part of its width (0.0 to 1.0) and lets go. */
    bool drag(const QString &name, double to);
    /** Carries what has one name to the place of what has another. */
    bool carry(const QString &name, const QString &onto);
    void press(Qt::Key key);
    /** Types letters where the focus is. */
    void type(const QString &text);

    QImage picture() const;
    /** The colour of a point of what has that name; negative offsets count from its right and lower edge. */
    QRgb colourAt(const QString &name, QPoint offset) const;
    /** Writes what is seen into a file of that name in the folder that VORO_PICTURES names, else in the build's. */
    bool keepPicture(const QString &name) const;

private:
    /** Where it is when it has come to rest; waits for that, and is empty when it does not come. */
    QRect settledPlace(const QString &name) const;
    QAccessibleInterface *find(const QString &name) const;

    QQmlApplicationEngine m_engine;
    QQuickWindow *m_window = nullptr;
};
