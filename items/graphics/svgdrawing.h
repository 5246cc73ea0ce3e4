// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QByteArray>
#include <QRectF>

#include <optional>

class Item;
class QGraphicsSvgItem;
class QPainter;
class QStyleOptionGraphicsItem;
class QSvgRenderer;
class QVariant;
class QWidget;

/// What an item on QGraphicsSvgItem shows: the renderer that it owns, the extent of the drawing, and its
/// painting. No text reaches a renderer past the guard against hostile drawings.
class VX_EXPORT SvgDrawing
{
public:
    /// Gives the item a renderer of its own, without a drawing, and switches the item's cache off.
    explicit SvgDrawing(QGraphicsSvgItem &item);
    Q_DISABLE_COPY_MOVE(SvgDrawing)

    /// The contents of a drawing's file; nothing for what is no plain file, cannot be read or exceeds 32 MiB.
    static std::optional<QByteArray> read(const QByteArray &path);

    /// Whether data of a datasource are a drawing: bytes, or a text that begins as one. Otherwise they are
    /// the path of a file.
    static bool isDrawing(const QVariant &data);

    /// Loads a drawing into the renderer, which is empty if it is refused. Returns whether it can be shown:
    /// whether it is accepted, and larger than nothing.
    bool load(const QByteArray &svg);
    /// The same with another renderer. The old one lives until control returns to the event loop.
    bool replace(const QByteArray &svg);
    /// Loads a drawing of which the extent is known when it is painted, or its renderer asked for.
    void loadWhenSeen(const QByteArray &svg, const QRectF &bounds);

    /// Whether this is the drawing that was last loaded, or waits to be.
    bool holds(const QByteArray &svg) const { return svg == m_waiting.value_or(m_loaded); }
    /// About as many bytes as the loaded drawing takes; 0 without one.
    qint64 memory() const { return m_memory; }

    /// The extent of the drawing, in whole units; empty, never negative, without one.
    QRectF bounds() const { return m_bounds; }
    /// The renderer with the drawing in it.
    QSvgRenderer *renderer();
    /// Paints the drawing as the item is mirrored, without a selection frame.
    void paint(const Item &item, QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget);

private:
    void loadGuarded(QSvgRenderer &renderer, const QByteArray &svg);
    void install(QSvgRenderer *renderer);
    void loadWhatWaits();

    QGraphicsSvgItem &m_item;
    QSvgRenderer *m_renderer;
    QRectF m_bounds;
    QByteArray m_loaded;
    std::optional<QByteArray> m_waiting;
    qint64 m_memory = 0;
};
