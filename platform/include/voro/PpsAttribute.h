#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QDebug>
#include <QtCore/QFlags>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QVariant>

namespace voro {

/** How a PPS object is opened; the bits may be combined. */
class PpsOpenMode {
public:
    enum Type {
        /** The object is written, never read. */
        Publish = 1,
        /** The object is read and watched for changes. */
        Subscribe = 2,
        /** Both on one connection: requests are written and their answers read. */
        PublishSubscribe = 3,
    };
    Q_DECLARE_FLAGS(Types, Type)
};
Q_DECLARE_OPERATORS_FOR_FLAGS(PpsOpenMode::Types)

/** What a read tells of an object or attribute besides its value. */
class PpsAttributeFlag {
public:
    enum Type {
        /** The value was cut off before its end. */
        Incomplete = 1,
        /** The object or attribute was deleted. */
        Deleted = 2,
        /** The object was created since the last read. */
        Created = 4,
        /** The object was replaced whole since the last read. */
        Truncated = 8,
    };
    Q_DECLARE_FLAGS(Types, Type)
};
Q_DECLARE_OPERATORS_FOR_FLAGS(PpsAttributeFlag::Types)

/** One decoded value with its flags: an attribute, or an object as the map of its attributes. */
class PpsAttribute {
public:
    PpsAttribute() = default;
    /** An attribute's value; a list or map holds what the JSON text held. */
    explicit PpsAttribute(QVariant value, PpsAttributeFlag::Types flags = {});
    /** An object's attributes by name. */
    explicit PpsAttribute(QMap<QString, PpsAttribute> attributes, PpsAttributeFlag::Types flags = {});

    /** The value as text: numbers in decimal, booleans as "true" or "false", empty for maps and lists. */
    QString toString() const;
    /** The value as a number; 0 when it is none. */
    int toInt() const;
    /** The value as a truth value; false when it is none. */
    bool toBool() const;
    /** The attributes of an object or the entries of a JSON map; empty for anything else. */
    QMap<QString, PpsAttribute> toMap() const;
    /**
     * The value: string, number (int, qint64 or double), bool, list or map. An object gives a map of its attributes'
     * values.
     */
    QVariant toVariant() const;
    PpsAttributeFlag::Types flags() const { return m_flags; }

    bool operator==(const PpsAttribute &other) const;

private:
    QVariant m_value;
    QMap<QString, PpsAttribute> m_attributes;
    PpsAttributeFlag::Types m_flags;
};

QDebug operator<<(QDebug debug, const PpsAttribute &attribute);

} // namespace voro
