// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QtGlobal>

class QGraphicsItem;

/// For items that scale a fixed content by a transform: builds the transform and keeps the item in place
/// while the transform's translation changes, also when the item joins or leaves a group. The item itself
/// announces the change of its geometry.
class VX_EXPORT ResizeRotatedHelper
{
public:
    ResizeRotatedHelper();
    virtual ~ResizeRotatedHelper();
    Q_DISABLE_COPY_MOVE(ResizeRotatedHelper)

    /// Gives the item the transform "scale, then rotate by angle degrees about (cx, cy)" and moves it by what
    /// the transform's translation has changed; right after joining a group, by the whole translation.
    void updateTransformOnResize(
        QGraphicsItem *item, double cx, double cy, double angle, double scaleX, double scaleY);
    /// The same transform without moving the item, which therefore turns about (cx, cy).
    void updateTransformOnRotation(
        QGraphicsItem *item, double cx, double cy, double angle, double scaleX, double scaleY);

    /// The item has left its group: moves it back by the translation that it was given there.
    void fixPositionOnUngroup(QGraphicsItem *item);
    void itemWasJustAddedToGroup() { m_firstResizeAfterAddedToGroup = true; }
    /// The group is a multiple selection: leaving it moves nothing.
    void temporaryGroup() { m_temporaryGroup = true; }

    bool getFirstResizeAfterAddedToGroup() const { return m_firstResizeAfterAddedToGroup; }
    void setFirstResizeAfterAddedToGroup(bool first) { m_firstResizeAfterAddedToGroup = first; }
    /// The translation of the transform last applied; part of the item's saved state.
    double getOldTransformCoefficientM31() const { return m_oldM31; }
    void setOldTransformCoefficientM31(double m31) { m_oldM31 = m31; }
    double getOldTransformCoefficientM32() const { return m_oldM32; }
    void setOldTransformCoefficientM32(double m32) { m_oldM32 = m32; }
    void setPositionChangeOnX(double change) { m_positionChangeX = change; }
    void setPositionChangeOnY(double change) { m_positionChangeY = change; }

private:
    bool m_firstResizeAfterAddedToGroup = false;
    bool m_temporaryGroup = false;
    double m_oldM31 = 0.0;
    double m_oldM32 = 0.0;
    double m_positionChangeX = 0.0;
    double m_positionChangeY = 0.0;
};
