// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/item.h"

#include "items/core/limits.h"
#include "items/core/record.h"
#include "platform/json/qobjecthelper.h"

#include <QGraphicsItem>
#include <QObject>

#include <array>

namespace {

/// The version since which a record holds mirrors and overprint.
constexpr unsigned int mirrorsSinceVersion = 6;

} // namespace

const QStringList &Item::ignoredPropertyNames()
{
    static const QStringList names { QStringLiteral("objectName"), QStringLiteral("parent"),
        QStringLiteral("opacity"), QStringLiteral("enabled"), QStringLiteral("visible"),
        QStringLiteral("pos"), QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("z"),
        QStringLiteral("rotation"), QStringLiteral("scale"), QStringLiteral("transformOriginPoint"),
        QStringLiteral("effect"), QStringLiteral("children"), QStringLiteral("width"),
        QStringLiteral("height"), QStringLiteral("elementId"), QStringLiteral("maximumCacheSize") };
    return names;
}

void Item::saveItemToData(QDataStream &stream)
{
    const QGraphicsItem *item = graphicsItem();
    const QTransform t = item ? item->transform() : QTransform();
    const QPointF position = item ? item->pos() : QPointF();
    Record::write(stream, qint16(m_id), qint32(m_flags), m_horizontalMirror, m_verticalMirror,
        m_allowOverprint, getItemZValue(), qint32(itemQFlags()), getItemIsVisible(), m_rotation, m_width,
        m_height, m_scaleX, m_scaleY, t.m11(), t.m12(), t.m13(), t.m21(), t.m22(), t.m23(), t.m31(), t.m32(),
        t.m33(), position.x(), position.y(), qint32(getDatasourceId()));
    stream << getDatasourceField();
}

void Item::loadItemFromData(QDataStream &stream, unsigned int version)
{
    qint16 id;
    qint32 flags;
    bool horizontal = false; // what a record without them means
    bool vertical = false;
    double z;
    qint32 graphicsFlags;
    bool visible;
    double rotation;
    QSizeF size;
    std::array<double, 9> m;
    QPointF position;
    qint32 datasourceId;
    const auto head = std::tie(id, flags);
    const auto mirrors = std::tie(horizontal, vertical, m_allowOverprint);
    const auto rest
        = std::tie(z, graphicsFlags, visible, rotation, size.rwidth(), size.rheight(), m_scaleX, m_scaleY,
            m[0], m[1], m[2], m[3], m[4], m[5], m[6], m[7], m[8], position.rx(), position.ry(), datasourceId);
    if (version >= mirrorsSinceVersion)
        Record::read(stream, std::tuple_cat(head, mirrors, rest));
    else
        Record::read(stream, std::tuple_cat(head, rest));

    setItemId(id);
    setItemFlags(static_cast<unsigned int>(flags));
    setItemHorizontalMirror(horizontal);
    setItemVerticalMirror(vertical);
    setItemZValue(z);
    setItemQFlags(static_cast<unsigned int>(graphicsFlags));
    setItemIsVisible(visible);
    m_rotation = rotation; // after the mirrors, which a line turns into a rotation
    storeItemSize(size);
    setItemTransform(QTransform(m[0], m[1], m[2], m[3], m[4], m[5], m[6], m[7], m[8]));
    moveItem(position);
    QString field;
    stream >> field;
    setBinding({ datasourceId, field });
    if (m_rare)
        m_rare->savedBinding = m_rare->binding;
}

QVariantMap Item::saveItemToJSON()
{
    const QObject *object = dynamic_cast<QObject *>(this);
    return object ? QJson::QObjectHelper::qobject2qvariant(object, ignoredPropertyNames()) : QVariantMap();
}

void Item::loadItemFromJSON(const QVariantMap &map, unsigned int /*version*/)
{
    if (QObject *object = dynamic_cast<QObject *>(this))
        QJson::QObjectHelper::qvariant2qobject(map, object);
    updateItemPositionAfterLoading();
}
