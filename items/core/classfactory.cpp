// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/classfactory.h"

#include "items/shapes/rectangleitem.h"

namespace {

struct Registration
{
    MobraTypes::ShapeType type;
    Item *(*creator)();
};

template <typename T> Item *make()
{
    return new T;
}

constexpr Registration registrations[] = {
    { MobraTypes::RectangleShape, &make<RectangleItem> },
};

} // namespace

ClassFactory::ClassFactory()
{
    registerShapes();
}

void ClassFactory::registerShapes()
{
    for (const auto &[type, creator] : registrations)
        m_creators.insert(qint32(type), creator);
}

Item *ClassFactory::create(MobraTypes::ShapeType type) const
{
    const Creator creator = m_creators.value(qint32(type), nullptr);
    return creator ? creator() : nullptr;
}
