// SPDX-License-Identifier: BSD-3-Clause
#include "platform/json/qobjecthelper.h"

#include <QHash>
#include <QMetaProperty>
#include <QObject>

#include <algorithm>
#include <utility>
#include <vector>

namespace QJson {

namespace {

struct NamedProperty
{
    QString name;
    QMetaProperty property;
};

/// The properties of a class by ascending name, the order of a map. Walking the meta-object and making names of its
/// UTF-8 texts for every object takes about half the time of a conversion, so it is done once for each class.
using PropertyList = std::vector<NamedProperty>;

PropertyList sortedProperties(const QMetaObject &type)
{
    PropertyList properties;
    for (int index = 0; index < type.propertyCount(); ++index)
        properties.push_back({ QString::fromUtf8(type.property(index).name()), type.property(index) });
    // A derived class may declare a name again; the last declaration is the one that a look-up by name finds.
    std::ranges::stable_sort(properties, {}, &NamedProperty::name);
    const auto firstOfEqual = std::unique(properties.rbegin(), properties.rend(),
        [](const NamedProperty &a, const NamedProperty &b) { return a.name == b.name; });
    properties.erase(properties.begin(), firstOfEqual.base());
    return properties;
}

const PropertyList &propertiesOf(const QObject &object)
{
    static QHash<const QMetaObject *, PropertyList> lists;
    const QMetaObject *type = object.metaObject();
    const auto known = lists.constFind(type);
    return known != lists.constEnd() ? *known : *lists.insert(type, sortedProperties(*type));
}

void write(const QMetaProperty &property, const QVariant &value, QObject *object)
{
    const QMetaType type = property.metaType();
    if (value.metaType() == type || type == QMetaType::fromType<QVariant>()) {
        property.write(object, value);
        return;
    }
    QVariant converted = value;
    if (converted.canConvert(type) && converted.convert(type))
        property.write(object, converted);
}

} // namespace

QVariantMap QObjectHelper::qobject2qvariant(const QObject *object, const QStringList &ignoredProperties)
{
    QVariantMap map;
    for (const auto &[name, property] : propertiesOf(*object)) {
        if (property.isReadable() && !ignoredProperties.contains(name))
            map.insert(map.cend(), name, property.read(object));
    }
    return map;
}

void QObjectHelper::qvariant2qobject(const QVariantMap &map, QObject *object)
{
    // Both sides ascend by name: one walk through the two.
    const PropertyList &properties = propertiesOf(*object);
    auto entry = properties.begin();
    for (auto value = map.cbegin(); value != map.cend(); ++value) {
        entry = std::find_if(entry, properties.end(), [&](const NamedProperty &p) { return p.name >= value.key(); });
        if (entry == properties.end())
            return;
        if (entry->name == value.key() && entry->property.isWritable() && value->isValid())
            write(entry->property, *value, object);
    }
}

} // namespace QJson
