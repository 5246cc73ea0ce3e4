// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/mirrorscope.h"

#include "items/core/item.h"

#include <QPainter>

MirrorScope::MirrorScope(const Item &item, QPainter &painter, double width, double height)
    : m_painter(painter)
{
    if (item.getItemHorizontalMirror() || item.getItemVerticalMirror())
        item.painterMirrorTransform(&painter, width, height);
    else
        m_upright.emplace(painter);
}

MirrorScope::~MirrorScope()
{
    if (!m_upright)
        m_painter.restore();
}
