#include "Settings.h"

#include <QtCore/QMetaProperty>
#include <QtCore/QSettings>
#include <QtCore/QTimerEvent>

namespace {

// A window that is being resized changes its size many times.
constexpr int DelayMs = 500;

} // namespace

Settings::~Settings()
{
    if (m_timer.isActive()) {
        store();
    }
}

void Settings::componentComplete()
{
    const QMetaMethod slot = staticMetaObject.method(staticMetaObject.indexOfSlot("note()"));
    for (int i = staticMetaObject.propertyCount(); i < metaObject()->propertyCount(); ++i) {
        const QMetaProperty property = metaObject()->property(i);
        // An alias reports changes only once it was read.
        const QVariant present = property.read(this);
        property.write(this, value(QLatin1String(property.name()), present));
        connect(this, property.notifySignal(), this, slot);
    }
}

QVariant Settings::value(const QString &key, const QVariant &otherwise) const
{
    QSettings file;
    file.beginGroup(m_category);
    return file.value(key, otherwise);
}

void Settings::setValue(const QString &key, const QVariant &value)
{
    m_changed.insert(key, value);
    m_timer.start(DelayMs, this);
}

void Settings::note()
{
    for (int i = staticMetaObject.propertyCount(); i < metaObject()->propertyCount(); ++i) {
        const QMetaProperty property = metaObject()->property(i);
        if (property.notifySignalIndex() == senderSignalIndex()) {
            // Read now: when this object goes, what the property stands for may have gone already.
            setValue(QLatin1String(property.name()), property.read(this));
        }
    }
}

void Settings::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == m_timer.timerId()) {
        m_timer.stop();
        store();
    }
}

void Settings::store()
{
    QSettings file;
    file.beginGroup(m_category);
    for (auto change = m_changed.cbegin(); change != m_changed.cend(); ++change) {
        file.setValue(change.key(), change.value());
    }
    m_changed.clear();
}
