// SPDX-License-Identifier: BSD-3-Clause
#pragma once

// The Qt properties of the items, in groups: a class names its groups in its own order, which is the order of
// its properties. The property names are the keys of the property map. Only lists here, no code.
//
// A class whose header moc cannot resolve ends up without properties and without an error; the contract test
// of all items compares the names.

#define VX_SHAPE_PROPERTY Q_PROPERTY(uint itemShape READ getItemShapeInt WRITE setItemShapeInt)

#define VX_IDENTITY_PROPERTIES                                                                               \
    Q_PROPERTY(short itemId READ itemId WRITE setItemId)                                                     \
    Q_PROPERTY(uint itemFlags READ itemFlags WRITE setItemFlags)                                             \
    Q_PROPERTY(uint itemQFlags READ itemQFlags WRITE setItemQFlags)                                          \
    Q_PROPERTY(double itemZValue READ getItemZValue WRITE setItemZValue)

// The mirrors are numbers in the map: 0.0 or 1.0.
#define VX_ROTATION_PROPERTIES                                                                               \
    Q_PROPERTY(double itemRotation READ getItemRotation WRITE setItemRotation)                               \
    Q_PROPERTY(double itemHorizontalMirror READ getItemHorizontalMirror WRITE setItemHorizontalMirror)       \
    Q_PROPERTY(double itemVerticalMirror READ getItemVerticalMirror WRITE setItemVerticalMirror)

#define VX_SIZE_PROPERTIES                                                                                   \
    Q_PROPERTY(double itemWidth READ getItemWidth WRITE setItemWidth)                                        \
    Q_PROPERTY(double itemHeight READ getItemHeight WRITE setItemHeight)                                     \
    Q_PROPERTY(double itemScaleX READ getItemScaleX WRITE setItemScaleX)                                     \
    Q_PROPERTY(double itemScaleY READ getItemScaleY WRITE setItemScaleY)

#define VX_TRANSFORM_PROPERTY                                                                                \
    Q_PROPERTY(QVariantList itemTransform READ getItemTransform WRITE setItemTransformFromList)

#define VX_OVERPRINT_PROPERTY Q_PROPERTY(bool allowOverprint READ getAllowOverprint WRITE setAllowOverprint)

#define VX_DATASOURCE_PROPERTIES                                                                             \
    Q_PROPERTY(int itemDatasourceId READ getDatasourceId WRITE setDatasourceId)                              \
    Q_PROPERTY(QString itemDatasourceField READ getDatasourceField WRITE setDatasourceField)

// Of items that scale a content: the translation of their transform.
#define VX_OLD_TRANSFORM_PROPERTIES                                                                          \
    Q_PROPERTY(double oldTransformCoefficientM31 READ getOldTransformCoefficientM31 WRITE                    \
            setOldTransformCoefficientM31)                                                                   \
    Q_PROPERTY(double oldTransformCoefficientM32 READ getOldTransformCoefficientM32 WRITE                    \
            setOldTransformCoefficientM32)

#define VX_PEN_COLOR_PROPERTY                                                                                \
    Q_PROPERTY(QString itemPenColor READ getItemPenColorString WRITE setItemPenColorString)

#define VX_FILL_COLOR_PROPERTY                                                                               \
    Q_PROPERTY(QString itemFillColor READ getItemFillColorString WRITE setItemFillColorString)

#define VX_PEN_PROPERTIES                                                                                    \
    Q_PROPERTY(ushort itemPenWidth READ getItemPenWidth WRITE setItemPenWidth)                               \
    Q_PROPERTY(ushort itemPenStyle READ getItemPenStyleInt WRITE setItemPenStyleInt)                         \
    Q_PROPERTY(ushort itemPenCapStyle READ getItemPenCapStyleInt WRITE setItemPenCapStyleInt)                \
    Q_PROPERTY(ushort itemPenJoinStyle READ getItemPenJoinStyleInt WRITE setItemPenJoinStyleInt)

#define VX_BRUSH_PROPERTY Q_PROPERTY(ushort itemBrushStyle READ getItemBrushStyle WRITE setItemBrushStyleInt)

#define VX_POSITION_PROPERTIES                                                                               \
    Q_PROPERTY(double itemPositionX READ getItemPositionX WRITE setItemPositionX)                            \
    Q_PROPERTY(double itemPositionY READ getItemPositionY WRITE setItemPositionY)

/// What most classes begin with.
#define VX_GEOMETRY_PROPERTIES                                                                               \
    VX_SHAPE_PROPERTY                                                                                        \
    VX_IDENTITY_PROPERTIES                                                                                   \
    VX_ROTATION_PROPERTIES                                                                                   \
    VX_SIZE_PROPERTIES                                                                                       \
    VX_TRANSFORM_PROPERTY                                                                                    \
    VX_OVERPRINT_PROPERTY

/// What all filled shapes end with.
#define VX_FILLED_SHAPE_PROPERTIES                                                                           \
    VX_PEN_COLOR_PROPERTY                                                                                    \
    VX_FILL_COLOR_PROPERTY                                                                                   \
    VX_PEN_PROPERTIES                                                                                        \
    VX_BRUSH_PROPERTY                                                                                        \
    VX_POSITION_PROPERTIES
