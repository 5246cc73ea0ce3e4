// SPDX-License-Identifier: BSD-3-Clause
#include "platform/json/qobjecthelper.h"

#include <QMetaProperty>
#include <QObject>

#include <algorithm>
#include <iterator>
#include <map>
#include <unordered_map>
#include <utility>
#include <vector>

namespace QJson {

namespace {

struct NamedProperty
{
    QString name;
    QMetaProperty property;
    QMetaType type = property.metaType();
    bool isWritable = property.isWritable();
};

/// The properties of a class by ascending name, the order of a map. Walking the meta-object and making names
/// of its UTF-8 texts for every object takes about half the time of a conversion, so it is done once for each
/// class.
using PropertyList = std::vector<NamedProperty>;

PropertyList sortedProperties(const QMetaObject &type)
{
    PropertyList properties;
    for (int index = 0; index < type.propertyCount(); ++index) {
        const QMetaProperty property = type.property(index);
        properties.push_back({ .name = QString::fromUtf8(property.name()), .property = property });
    }
    // A derived class may declare a name again; the last declaration is the one that a look-up by name finds.
    std::ranges::stable_sort(properties, {}, &NamedProperty::name);
    const auto firstOfEqual = std::unique(properties.rbegin(), properties.rend(),
        [](const NamedProperty &a, const NamedProperty &b) { return a.name == b.name; });
    properties.erase(properties.begin(), firstOfEqual.base());
    return properties;
}

struct ClassProperties
{
    PropertyList all;
    QStringList ignored;
    PropertyList readable; ///< without the ignored ones
};

PropertyList readableProperties(const PropertyList &all, const QStringList &ignored)
{
    PropertyList readable;
    std::ranges::copy_if(all, std::back_inserter(readable),
        [&](const NamedProperty &p) { return p.property.isReadable() && !ignored.contains(p.name); });
    return readable;
}

ClassProperties &propertiesOf(const QObject &object)
{
    static std::unordered_map<const QMetaObject *, ClassProperties> classes; // references stay valid
    const QMetaObject *type = object.metaObject();
    auto known = classes.find(type);
    if (known == classes.end()) {
        PropertyList all = sortedProperties(*type);
        PropertyList readable = readableProperties(all, {});
        known = classes.emplace(type, ClassProperties { std::move(all), {}, std::move(readable) }).first;
    }
    return known->second;
}

/// Callers pass the same list for every object of a class, mostly: the last selection is kept.
const PropertyList &readablePropertiesOf(const QObject &object, const QStringList &ignored)
{
    ClassProperties &properties = propertiesOf(object);
    if (properties.ignored != ignored) {
        properties.readable = readableProperties(properties.all, ignored);
        properties.ignored = ignored;
    }
    return properties.readable;
}

void write(const NamedProperty &to, const QVariant &value, QObject *object)
{
    if (value.metaType() == to.type || to.type == QMetaType::fromType<QVariant>()) {
        to.property.write(object, value);
        return;
    }
    QVariant converted = value;
    if (converted.canConvert(to.type) && converted.convert(to.type))
        to.property.write(object, converted);
}

} // namespace

QVariantMap QObjectHelper::qobject2qvariant(const QObject *object, const QStringList &ignoredProperties)
{
    std::map<QString, QVariant> values; // unlike QVariantMap, takes a value without copying it
    for (const NamedProperty &from : readablePropertiesOf(*object, ignoredProperties))
        values.emplace_hint(values.end(), from.name, from.property.read(object));
    return QVariantMap(std::move(values));
}

void QObjectHelper::qvariant2qobject(const QVariantMap &map, QObject *object)
{
    // Both sides ascend by name: one walk through the two.
    const PropertyList &properties = propertiesOf(*object).all;
    auto entry = properties.begin();
    for (auto value = map.cbegin(); value != map.cend(); ++value) {
        int order = -1;
        while (entry != properties.end() && (order = entry->name.compare(value.key())) < 0)
            ++entry;
        if (order == 0 && entry->isWritable && value->isValid())
            write(*entry, *value, object);
    }
}

} // namespace QJson
