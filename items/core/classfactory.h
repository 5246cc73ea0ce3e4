// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/mobratypes.h"
#include "items/core/vxexport.h"

#include <QMap>

class Item;

/// Makes an empty item of any class from its type code: a document's reader asks it for the item, which then
/// loads itself.
class VX_EXPORT ClassFactory
{
public:
    ClassFactory();
    Q_DISABLE_COPY_MOVE(ClassFactory)

    /// Enters all classes; entering one again changes nothing.
    void registerShapes();
    /// A new item in its default state, in no scene, owned by the caller. Null for a code without a class.
    [[nodiscard]] Item *create(MobraTypes::ShapeType type) const;

private:
    using Creator = Item *(*)();

    QMap<qint32, Creator> m_creators;
};
