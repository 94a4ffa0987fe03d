#include <voro/PpsAttribute.h>

#include <limits>

namespace voro {

PpsAttribute::PpsAttribute(QVariant value, PpsAttributeFlag::Types flags) : m_value(std::move(value)), m_flags(flags) {}

PpsAttribute::PpsAttribute(QMap<QString, PpsAttribute> attributes, PpsAttributeFlag::Types flags)
    : m_attributes(std::move(attributes)),
      m_flags(flags)
{}

QString PpsAttribute::toString() const
{
    return m_value.toString();
}

int PpsAttribute::toInt() const
{
    bool isNumber = false;
    const double value = m_value.toDouble(&isNumber);
    const bool fits = value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max();
    return isNumber && fits ? m_value.toInt() : 0;
}

bool PpsAttribute::toBool() const
{
    if (m_value.typeId() == QMetaType::QString) {
        return m_value.toString() == QLatin1String("true");
    }
    return m_value.toDouble() != 0;
}

QMap<QString, PpsAttribute> PpsAttribute::toMap() const
{
    if (m_value.typeId() != QMetaType::QVariantMap) {
        return m_attributes;
    }
    QMap<QString, PpsAttribute> entries;
    const QVariantMap map = m_value.toMap();
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        entries.insert(entries.cend(), entry.key(), PpsAttribute(entry.value()));
    }
    return entries;
}

QVariant PpsAttribute::toVariant() const
{
    if (m_attributes.isEmpty()) {
        return m_value;
    }
    QVariantMap values;
    for (auto attribute = m_attributes.cbegin(); attribute != m_attributes.cend(); ++attribute) {
        if (!(attribute->flags() & PpsAttributeFlag::Deleted)) {
            values.insert(values.cend(), attribute.key(), attribute->toVariant());
        }
    }
    return values;
}

bool PpsAttribute::operator==(const PpsAttribute &other) const
{
    return m_flags == other.m_flags && m_value == other.m_value && m_attributes == other.m_attributes;
}

QDebug operator<<(QDebug debug, const PpsAttribute &attribute)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "PpsAttribute(" << attribute.toVariant() << ", flags=" << attribute.flags().toInt() << ')';
    return debug;
}

} // namespace voro
