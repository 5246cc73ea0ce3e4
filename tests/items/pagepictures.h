// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/item.h"
#include "items/core/mobratypes.h"

#include <QImage>
#include <QList>
#include <QString>

#include <functional>
#include <memory>

/// A kind of item and what the picture of its page shows.
struct PagePicture
{
    MobraTypes::ShapeType shape;
    QString page; ///< The name of the page and of the picture.
    std::function<std::unique_ptr<Item>()> make;
    /// Qt rounds gradients differently on processors with other vector instructions, and the outlines of
    /// turned or large letters differently by what was drawn before; everything else is exact.
    int tolerance = 0;
};

/// One for each kind, by their type codes.
[[nodiscard]] const QList<PagePicture> &pagePictures();

/// The item on white, as a view with antialiasing would show it.
[[nodiscard]] QImage rendered(const PagePicture &picture);
