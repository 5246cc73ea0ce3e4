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
    /// Where the item is when it is drawn, and a text what is done with it: its second and third letters are
    /// selected in an edit, it has a marker where there is no text, or a border where there is too much.
    enum Place { Alone, Selected, SelectedInGroup, Edited, Marked, Bordered };

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

[[nodiscard]] QList<Look> labelTextLooks();
[[nodiscard]] QList<Look> richTextLooks();
[[nodiscard]] QList<Look> barcodeLooks();
[[nodiscard]] QList<Look> svgLooks();
[[nodiscard]] QList<Look> pictureLooks();
[[nodiscard]] QList<Look> symbolLooks();
