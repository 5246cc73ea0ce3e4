// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QGraphicsItem>
#include <QMap>
#include <QString>
#include <QVariant>

#include <optional>

/// A graphics item that supplies what Item and its mixins leave to the concrete classes, and nothing else, so
/// that a test sees one mixin alone. Its bounding rectangle is the logical size unless a test sets another.
template <typename Mixin> class BareShape : public QGraphicsItem, public Mixin
{
public:
    void setBounds(const QRectF &bounds) { m_bounds = bounds; }

    [[nodiscard]] QRectF boundingRect() const override
    {
        return m_bounds.value_or(QRectF(QPointF(0.0, 0.0), Mixin::getItemSize()));
    }
    [[nodiscard]] int type() const override { return static_cast<int>(Mixin::getItemShape()); }
    void paint(
        QPainter * /*painter*/, const QStyleOptionGraphicsItem * /*option*/, QWidget * /*widget*/) override
    {
    }

    [[nodiscard]] QString toDescriptionString() const override { return QStringLiteral("bare shape"); }
    QMap<QString, QVariant> saveItemToJSON() override { return {}; }
    void loadItemFromJSON(const QMap<QString, QVariant> & /*map*/, unsigned int /*version*/) override { }

protected:
    void announceGeometryChange() override { prepareGeometryChange(); }

private:
    std::optional<QRectF> m_bounds;
};
