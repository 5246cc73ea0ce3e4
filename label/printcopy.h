// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/vxlabelexport.h"

#include <QColor>
#include <QList>

#include <memory>

class BarcodeItem;
class FillableItem;
class Item;
class QGraphicsItem;
class QGraphicsScene;
class TextItem;

/// A copy of an item that is reduced to one ink and handed to a print scene; the item itself stays as it is.
class VX_LABEL_EXPORT PrintCopy
{
public:
    enum class Mode { Positive, Negative };

    /// scaling is dots per scene unit; colors are those of paper and inks, by which the pixels of pictures in
    /// texts are told apart.
    PrintCopy(Item &original, double scaling, Mode mode, const QList<QColor> &colors);
    ~PrintCopy();
    Q_DISABLE_COPY_MOVE(PrintCopy)

    /// Lets a copy lie in the order of the z values on a page of one size, whatever a file's flags say, and
    /// without a selection frame.
    static void makeStackable(QGraphicsItem &copy);

    /// Makes what prints black and the rest white. Returns whether anything prints.
    bool reduceTo(const QColor &ink);
    /// Instead of that, shows for all inks at once which of them prints: everything takes the colour of a
    /// number, 0 for what no ink prints and i + 1 for the ink that is i + 1 behind the paper among the
    /// colours. False, and the copy is of no more use, if the item's inks cannot be told apart like that, as
    /// those of a gradient, or if there are more than numbers.
    [[nodiscard]] bool numberInks();
    /// The colour of a number below 8, which is none that an item takes for another thing: a corner of a
    /// cube, so that two of them, blended by the half-covered dots of a thin line, never make another one.
    [[nodiscard]] static constexpr QRgb numbered(QRgb number)
    {
        return 0xFF404040U | (number & 4) << 21 | (number & 2) << 14 | (number & 1) << 7;
    }
    static constexpr QRgb numberBits = 0x00808080U; ///< in which these colours differ
    static constexpr qsizetype mostNumbers = 8;
    /// Puts the reduced copy on top of what the scene holds at its z value. The last call.
    void handTo(QGraphicsScene &scene);

private:
    void prepareColors();
    void prepareBarcode();
    void prepareText();
    void separateBackdrop();
    [[nodiscard]] QColor numberOf(const QColor &color) const;
    [[nodiscard]] bool reduceText(const QColor &ink);
    [[nodiscard]] bool reduceShape(const QColor &ink);
    [[nodiscard]] bool reduceEnds(const QColor &pen, const QColor &ink);
    void restoreClearPen();
    void preparePicture();
    void alignPicture();
    [[nodiscard]] bool outlineIsPainted() const;

    std::unique_ptr<Item> m_item;
    QGraphicsItem *m_graphics; ///< m_item
    FillableItem *m_fillable; ///< m_item, or null
    TextItem *m_text; ///< m_item, or null
    BarcodeItem *m_barcode; ///< m_item, or null
    std::unique_ptr<PrintCopy> m_backdrop; ///< The gradient behind a text.
    QList<QColor> m_colors;
    double m_scaling;
    Mode m_mode;
    bool m_penIsClear = false;
    bool m_barsAreClear = false;
};
