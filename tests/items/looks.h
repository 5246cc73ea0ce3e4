// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/item.h"
#include "items/core/mobratypes.h"

#include <QByteArray>
#include <QList>

#include <functional>

/// How a picture of an item comes about.
struct Look
{
    /// Where the item is when it is drawn.
    enum Place { Alone, Selected, SelectedInGroup };

    QByteArray name;
    /// Changes a new item of 64 x 48.
    std::function<void(Item &)> change;
    Place place = Alone;
    /// Qt rounds gradients differently on processors with other vector instructions; everything else is
    /// exact.
    int tolerance = 0;
};

/// A class and the looks in which its items are drawn.
struct Subject
{
    QByteArray name;
    MobraTypes::ShapeType shape;
    QList<Look> looks;
};

[[nodiscard]] const QList<Subject> &subjectsWithLooks();
