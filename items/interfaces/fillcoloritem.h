// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QColor>
#include <QString>

/// The fill colour of an item. It carries the field itself, invalid until the item sets it.
class VX_EXPORT FillColorItem
{
public:
    virtual ~FillColorItem();

    QColor getItemFillColor() const { return m_fillColor; }
    virtual void setItemFillColor(const QColor &color) = 0;
    /// "#rrggbb"; the alpha is dropped, and a transparent or invalid colour reads "#000000".
    QString getItemFillColorString() const;
    /// Parses any form that QColor::fromString knows; an unparsable text sets an invalid colour.
    virtual void setItemFillColorString(const QString &color);

protected:
    QColor m_fillColor;
};
