// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/data/datasource.h"
#include "label/dither.h"
#include "label/problem.h"
#include "label/vxlabelexport.h"

#include <QColor>
#include <QList>
#include <QSize>
#include <QSizeF>
#include <QString>

#include <memory>
#include <vector>

class Item;

/// One ink or ribbon of the printer.
struct Ink
{
    QString name; ///< "red"; part of the plate's file name
    QColor color; ///< opaque RGB; items print in the ink whose colour equals theirs

    friend bool operator==(const Ink &, const Ink &) = default;
};

/// A label: a page, the inks it prints in, and its items from bottom to top. It owns the items.
class VX_LABEL_EXPORT LabelDocument
{
public:
    /// The version that is written. Mirrors and overprint exist in records since version 6.
    static constexpr unsigned int CurrentVersion = 6;

    /// A page of 100 mm × 50 mm at 300 dpi with the ink "black" on white paper.
    LabelDocument();
    ~LabelDocument();
    LabelDocument(LabelDocument &&) noexcept;
    LabelDocument &operator=(LabelDocument &&) noexcept;

    /// In millimetres.
    [[nodiscard]] QSizeF pageSize() const { return m_pageSize; }
    void setPageSize(QSizeF millimetres) { m_pageSize = millimetres; }
    /// Scene units per inch: one unit is one dot of a printer of this resolution.
    [[nodiscard]] double designDpi() const { return m_designDpi; }
    void setDesignDpi(double dpi) { m_designDpi = dpi; }
    /// The page in scene units.
    [[nodiscard]] QSizeF pageSizeInUnits() const;
    /// The page in dots at an output resolution: each side is round(mm / 25.4 × dpi).
    [[nodiscard]] QSize pageSizeInDots(double dpi) const;

    /// In printing order.
    [[nodiscard]] const QList<Ink> &inks() const { return m_inks; }
    void setInks(const QList<Ink> &inks) { m_inks = inks; }
    /// The colour of the label stock, opaque. Gradients run from it to their fill colour, so every item gets
    /// it as its scene background.
    [[nodiscard]] QColor paper() const { return m_paper; }
    void setPaper(const QColor &color);

    /// How pictures become dots.
    [[nodiscard]] Dither dither() const { return m_dither; }
    void setDither(Dither dither) { m_dither = dither; }

    /// What bound items take their content from.
    [[nodiscard]] const QList<DataSource> &sources() const { return m_sources; }
    void setSources(const QList<DataSource> &sources) { m_sources = sources; }

    /// From bottom to top where their z values are equal.
    [[nodiscard]] const std::vector<std::unique_ptr<Item>> &items() const { return m_items; }
    /// Appends an item and returns it.
    Item *addItem(std::unique_ptr<Item> item);
    /// Puts an item in the place of another one, which is deleted.
    void replaceItem(std::size_t place, std::unique_ptr<Item> item);
    /// A document of the same page, inks, paper and sources.
    [[nodiscard]] LabelDocument withoutItems() const;

    /// What keeps this document from being saved or printed: page, resolution, inks (count, names unique and
    /// usable as file names, colours opaque and distinct, none the paper's), data sources, items with numbers
    /// that are not finite or beyond the drawable range. `where` is a JSON pointer into the document as it
    /// would be written.
    [[nodiscard]] Problems problems() const;

private:
    QSizeF m_pageSize { 100.0, 50.0 };
    double m_designDpi = 300.0;
    QList<Ink> m_inks;
    QColor m_paper;
    Dither m_dither = Dither::Diffusion;
    QList<DataSource> m_sources;
    std::vector<std::unique_ptr<Item>> m_items;
};
