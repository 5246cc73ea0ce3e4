// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QString>

/// The font of an item with text. Sizes are pixels in texts and points in barcodes.
class VX_EXPORT IFontItem
{
public:
    virtual ~IFontItem();

    virtual int getItemFontSize() const = 0;
    virtual void setItemFontSize(int size) = 0;
    virtual QString getItemFontFamily() const = 0;
    virtual void setItemFontFamily(const QString &family) = 0;
    virtual bool getItemBold() const = 0;
    virtual void setItemBold(bool bold) = 0;
    virtual bool getItemItalic() const = 0;
    virtual void setItemItalic(bool italic) = 0;
    virtual bool getItemUnderline() const = 0;
    virtual void setItemUnderline(bool underline) = 0;
};
