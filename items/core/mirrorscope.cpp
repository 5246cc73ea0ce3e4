// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/mirrorscope.h"

#include "items/core/item.h"

#include <QPainter>

MirrorScope::MirrorScope(const Item &item, QPainter &painter, double width, double height)
    : m_painter(painter)
{
    item.painterMirrorTransform(&painter, width, height);
}

MirrorScope::~MirrorScope()
{
    m_painter.restore();
}
