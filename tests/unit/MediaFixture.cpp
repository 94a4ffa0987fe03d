#include "MediaFixture.h"

#include <QtCore/QDebug>
#include <QtCore/QEventLoop>
#include <QtCore/QMap>
#include <QtCore/QMetaProperty>
#include <QtCore/QRegularExpression>

namespace {

QString shown(const QMetaProperty &property, const QVariant &value)
{
    if (value.metaType().flags().testFlag(QMetaType::IsEnumeration)) {
        return QLatin1String(property.enumerator().valueToKey(value.toInt()));
    }
    if (value.canConvert<QString>()) {
        return value.toString();
    }
    QString text;
    QDebug(&text).nospace() << value;
    return text;
}

/** The "emit signal()" or "  argument" of a line for debugging; empty when it is another one. */
QString announced(const QString &line)
{
    static const QRegularExpression form(QStringLiteral("^(Media|Audio)\\w+::\\w+: (emit .*|  [a-zA-Z]+)(=|$)"));
    return form.match(line).captured(2);
}

/** What is announced for a signal: its name and those of its arguments, as they are written. */
QStringList announcementOf(const QString &signal)
{
    // All others are announced under their own name, with the one argument "x" of "xChanged".
    static const QMap<QString, QStringList> others{
        {"audioOutputChanged", {"emit audioOutputChanged()", "  output"}},
        {"autoPauseChanged", {"emit autoPauseChanged()"}},
        {"buffering", {"emit buffering()", "  percentage"}},
        {"closedCaptionEnabledChanged", {"emit closedCaptionEnabledChanged()", "  enabled"}},
        {"closedCaptionIndexChanged", {"emit closedCaptionIndexChanged()", "  index"}},
        {"closedCaptionUrlChanged", {"emit closedCaptionUrlChanged()", "  track", "  url"}},
        {"error", {"emit error()", "  error", "  position"}},
        {"metaDataChanged", {"emit metaDataChanged()", "  metadata"}},
        {"playbackCompleted", {"emit playbackCompleted()"}},
        {"recordingLevelChanged", {}}, // Only when a reset makes it 0, which is left out here.
        {"sourceUrlChanged", {"emit sourceChanged()"}},
        {"speedChanged", {"emit speedChanged()", "  percentage"}},
        {"videoDimensionsChanged", {"emit m_videoDimensionsChanged()", "  videoDimensions"}},
        {"videoOutputChanged", {"emit videoOutputChanged()", "  output"}},
    };
    const QString name = signal.section(QLatin1Char('('), 0, 0);
    const QString argument = QString(name).remove(QLatin1String("Changed"));
    return others.value(name, {QStringLiteral("emit %1()").arg(name), QStringLiteral("  ") + argument});
}

} // namespace

QStringList propertiesOf(const QObject &object)
{
    QStringList lines;
    const QMetaObject &metaObject = *object.metaObject();
    for (int i = metaObject.propertyOffset(); i < metaObject.propertyCount(); ++i) {
        const QMetaProperty property = metaObject.property(i);
        lines += QLatin1String(property.name()) + QLatin1Char('=') + shown(property, property.read(&object));
    }
    return lines;
}

bool isSignal(const QString &line)
{
    return line.endsWith(QLatin1Char(')'));
}

bool isAnnouncement(const QString &line)
{
    return !announced(line).isEmpty();
}

void compareAnnouncements(const QStringList &debugLines, const QStringList &trace)
{
    QStringList found;
    for (const QString &line : debugLines) {
        if (isAnnouncement(line) && !line.contains(QLatin1String("::onVolumeLevelChanged:"))) {
            found += announced(line);
        }
    }
    QStringList expected;
    for (const QString &line : trace) {
        // A signal that comes a second time, as a variant, is announced once.
        static const QRegularExpression variant(QStringLiteral("\\((.*, )?uint "));
        if (voro::multimedia::ENABLE_DEBUG && isSignal(line) && !variant.match(line).hasMatch()) {
            expected += announcementOf(line);
        }
    }
    QCOMPARE(found, expected);
}

void runEventLoop()
{
    QEventLoop loop;
    QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    loop.exec();
}
