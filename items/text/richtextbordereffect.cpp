// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/richtextbordereffect.h"

#include "items/text/richtextitem.h"

#include <QGraphicsScene>
#include <QPainter>

#include <utility>

bool RichTextBorderEffect::s_firstNotification = true;

namespace {

constexpr double fitTolerance = 4.5;

} // namespace

RichTextBorderEffect::RichTextBorderEffect(QObject *parent)
    : QGraphicsEffect(parent)
{
    setRichTextItem(parent);
    update();
}

RichTextBorderEffect::~RichTextBorderEffect() = default;

void RichTextBorderEffect::setRichTextItem(QObject *object)
{
    setRichTextItem(dynamic_cast<IRichTextItem *>(object));
}

void RichTextBorderEffect::setRichTextItem(RichTextItem *item)
{
    setRichTextItem(static_cast<IRichTextItem *>(item));
}

void RichTextBorderEffect::setRichTextItem(IRichTextItem *item)
{
    if (!item)
        return;
    m_item = item;
    update();
}

void RichTextBorderEffect::setColor(const QColor &color)
{
    m_color = color;
    update();
}

void RichTextBorderEffect::setBorderShown(bool shown)
{
    const bool first = std::exchange(s_firstNotification, false);
    const bool changed = shown != std::exchange(m_borderShown, shown);
    if (changed || first)
        Q_EMIT borderShownChanged(shown);
}

void RichTextBorderEffect::draw(QPainter *painter)
{
    drawSource(painter);
    const bool overflows = m_item && !m_item->getTextFitsInBox();
    if (overflows) {
        painter->setPen(m_color);
        painter->drawRect(boundingRect());
    }
    setBorderShown(overflows);
}

void RichTextBorderEffect::installEffectOnItems(QGraphicsScene *scene)
{
    if (!scene)
        return;
    RichTextItem::setTextFitsTolerance(fitTolerance);
    const QList<QGraphicsItem *> items = scene->items(Qt::DescendingOrder);
    for (QGraphicsItem *item : items) {
        auto *text = dynamic_cast<RichTextItem *>(item);
        if (!text)
            continue;
        if (text->graphicsEffect())
            text->graphicsEffect()->setEnabled(true);
        else
            text->setGraphicsEffect(new RichTextBorderEffect(text));
        text->updateTextFitsInBox();
        text->graphicsEffect()->update();
    }
}

void RichTextBorderEffect::enableEffectOnItems(QGraphicsScene *scene, bool enable)
{
    if (!scene)
        return;
    const QList<QGraphicsItem *> items = scene->items();
    for (QGraphicsItem *item : items) {
        if (item->graphicsEffect())
            item->graphicsEffect()->setEnabled(enable);
    }
}
