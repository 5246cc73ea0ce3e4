// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/svgdrawing.h"

#include "items/core/item.h"
#include "items/core/limits.h"
#include "items/core/mirrorscope.h"
#include "items/graphics/svgguard.h"

#include <QFile>
#include <QFileInfo>
#include <QGraphicsSvgItem>
#include <QStyleOptionGraphicsItem>
#include <QSvgRenderer>
#include <QVariant>
#include <QXmlStreamReader>

#include <utility>

SvgDrawing::SvgDrawing(QGraphicsSvgItem &item)
    : m_item(item)
    , m_renderer(new QSvgRenderer(&item))
{
    m_item.setCacheMode(QGraphicsItem::NoCache);
    install(m_renderer);
}

std::optional<QByteArray> SvgDrawing::read(const QByteArray &path)
{
    const QString name = QString::fromUtf8(path);
    QFile file(name);
    // Opening a pipe would wait for its other end.
    if (!QFileInfo(name).isFile() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray contents = file.read(Limits::MaxSvgBytes + 1);
    if (contents.size() > Limits::MaxSvgBytes)
        return std::nullopt;
    return contents;
}

bool SvgDrawing::isDrawing(const QVariant &data)
{
    return data.userType() == QMetaType::QByteArray || data.toByteArray().startsWith('<');
}

/// What is refused does not reach the renderer, and links to files are taken out.
void SvgDrawing::loadGuarded(QSvgRenderer &renderer, const QByteArray &svg)
{
    m_waiting.reset();
    m_loaded = svg;
    const SvgGuard::Answer answer = svg.isEmpty() ? SvgGuard::Answer() : SvgGuard::check(svg);
    m_memory = answer.memory;
    if (answer.verdict != SvgGuard::Verdict::Refused) {
        renderer.load(answer.drawing);
        return;
    }
    QXmlStreamReader nothing; // of which Qt does not warn
    renderer.load(&nothing);
}

void SvgDrawing::install(QSvgRenderer *renderer)
{
    // The item takes the extent of a drawing when a renderer is installed, not when one loads; and it deletes
    // a renderer only if it made it itself.
    m_renderer = renderer;
    m_item.setSharedRenderer(renderer);
    const QRectF bounds = m_item.QGraphicsSvgItem::boundingRect();
    m_bounds = bounds.isEmpty() ? QRectF() : bounds;
}

bool SvgDrawing::load(const QByteArray &svg)
{
    loadGuarded(*m_renderer, svg);
    install(m_renderer);
    return !m_bounds.isEmpty();
}

bool SvgDrawing::replace(const QByteArray &svg)
{
    m_renderer->deleteLater();
    m_renderer = new QSvgRenderer(&m_item);
    return load(svg);
}

void SvgDrawing::loadWhenSeen(const QByteArray &svg, const QRectF &bounds)
{
    m_waiting = svg;
    m_bounds = bounds;
}

void SvgDrawing::loadWhatWaits()
{
    if (!m_waiting)
        return;
    const QRectF bounds = m_bounds;
    load(*std::exchange(m_waiting, std::nullopt));
    m_bounds = bounds;
}

QSvgRenderer *SvgDrawing::renderer()
{
    loadWhatWaits();
    return m_renderer;
}

void SvgDrawing::paint(
    const Item &item, QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget)
{
    loadWhatWaits();
    QStyleOptionGraphicsItem unselected(*option);
    unselected.state &= ~QStyle::State_Selected; // or Qt would draw a frame of its own
    const MirrorScope mirrored(item, *painter, m_bounds.width(), m_bounds.height());
    m_item.QGraphicsSvgItem::paint(painter, &unselected, widget);
}
