// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QByteArray>

/// An item whose content comes from a picture or drawing file. The path is UTF-8.
class VX_EXPORT IGraphicItem
{
public:
    virtual ~IGraphicItem();

    /// Both return false when the file was refused; the item then shows its error state.
    virtual bool loadItemFromFile(const QByteArray &path) = 0;
    /// Replaces the content and keeps the frame of the item.
    virtual bool reloadItemFromFile(const QByteArray &path) = 0;
};
