#include <QtTest/QtTest>

#include <Files.h>
#include <LibraryClasses.h>
#include <private/AudioRecorderPrivate.h>
#include <private/MmrContextNotifier.h>
#include <Rows.h>

using namespace voro::multimedia;

namespace {

QString revised(const QString &text, int revision)
{
    return revision == 0 ? text : QStringLiteral("%1 @%2").arg(text).arg(revision);
}

QString described(const QMetaProperty &property)
{
    QStringList parts{QLatin1String(property.name()), QLatin1String(property.typeName())};
    const std::pair<bool, const char *> attributes[] = {{property.isReadable(), "read"},
                                                        {property.isWritable(), "write"},
                                                        {property.isConstant(), "constant"},
                                                        {property.isFinal(), "final"}};
    for (const auto &[isSet, name] : attributes) {
        if (isSet) {
            parts += QLatin1String(name);
        }
    }
    if (property.hasNotifySignal()) {
        parts += QLatin1String(property.notifySignal().methodSignature());
    }
    return revised(parts.join(QLatin1Char(' ')), property.revision());
}

QString described(const QMetaEnum &enumeration)
{
    QStringList parts{QLatin1String(enumeration.name()) + QLatin1String(enumeration.isFlag() ? " flags" : "")};
    for (int i = 0; i < enumeration.keyCount(); ++i) {
        parts += QStringLiteral("%1=%2").arg(QLatin1String(enumeration.key(i))).arg(enumeration.value(i));
    }
    return parts.join(QLatin1Char(' '));
}

/** The class's own declarations, with the library's namespace as a leading "::". */
QStringList dump(const QMetaObject &type)
{
    QStringList entries;
    for (int i = type.enumeratorOffset(); i < type.enumeratorCount(); ++i) {
        entries += QLatin1String("enum ") + described(type.enumerator(i));
    }
    for (int i = type.propertyOffset(); i < type.propertyCount(); ++i) {
        entries += QLatin1String("property ") + described(type.property(i));
    }
    for (int i = type.methodOffset(); i < type.methodCount(); ++i) {
        static const char *const kinds[] = {"method", "signal", "slot", "constructor"};
        const QMetaMethod method = type.method(i);
        const QStringList parts{QLatin1String(kinds[method.methodType()]), QLatin1String(method.typeName()),
                                QLatin1String(method.methodSignature())};
        entries += revised(parts.join(QLatin1Char(' ')), method.revision());
    }
    return entries.replaceInStrings(QStringLiteral("voro::multimedia::"), QStringLiteral("::"));
}

} // namespace

/** Compares what the classes declare to the meta-object system with metaobjects.txt, in its order. */
class MetaObjectsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void declaration_isAsWritten_data()
    {
        const Rows<QStringList> row("declared");
        const QList<const QMetaObject *> privates{&AudioRecorderPrivate::staticMetaObject,
                                                  &MmrContextNotifier::staticMetaObject};
        for (const QMetaObject *type : LibraryEnumerations + LibraryClasses + privates) {
            row(type->className(), dump(*type));
        }
    }

    void declaration_isAsWritten()
    {
        QFETCH(QStringList, declared);
        // A paragraph a class: its name, then its declarations with "; " between; lines go on after two blanks.
        const QString whole =
            QString::fromUtf8(readFile(QStringLiteral(METAOBJECTS))).replace(QLatin1String("\n  "), QLatin1String(" "));
        const QString name = QLatin1String(QTest::currentDataTag());
        const QStringList paragraphs = whole.split(QLatin1Char('\n')).filter(name + QLatin1String(": "));
        QCOMPARE(paragraphs.size(), 1);
        QCOMPARE(declared, paragraphs.first().mid(name.size() + 2).split(QStringLiteral("; ")));
    }
};

QTEST_GUILESS_MAIN(MetaObjectsTest)
#include "tst_metaobjects.moc"
