// SPDX-License-Identifier: BSD-3-Clause
#include "label/labeldocument.h"

#include "items/core/limits.h"
#include "items/style/fillableitem.h"
#include "label/documentrules.h"
#include "label/inkrules.h"
#include "label/itemmap.h"
#include "label/itemtree.h"
#include "label/jsonpointer.h"
#include "label/labellimits.h"
#include "label/problemlog.h"
#include "label/wording.h"

using namespace Qt::StringLiterals;

namespace {

constexpr double millimetresPerInch = 25.4;

void setBackground(Item &item, const QColor &paper)
{
    if (auto *fillable = dynamic_cast<FillableItem *>(&item))
        fillable->setSceneBackgroundColor(paper);
    for (Item *member : ItemTree::membersOf(item))
        setBackground(*member, paper);
}

void checkRange(double value, double least, double most, const QString &where, ProblemLog &log)
{
    if (value >= least && value <= most)
        return;
    log.add(where, Wording::number(value) + u" is out of range"_s,
        u"use a number from %1 to %2"_s.arg(Wording::number(least), Wording::number(most)));
}

} // namespace

LabelDocument::LabelDocument()
    : m_inks { { u"black"_s, QColor(Qt::black) } }
    , m_paper(Qt::white)
{
}

LabelDocument::~LabelDocument() = default;
LabelDocument::LabelDocument(LabelDocument &&) noexcept = default;
LabelDocument &LabelDocument::operator=(LabelDocument &&) noexcept = default;

QSizeF LabelDocument::pageSizeInUnits() const
{
    return m_pageSize / millimetresPerInch * m_designDpi;
}

QSize LabelDocument::pageSizeInDots(double dpi) const
{
    const QSizeF dots = m_pageSize / millimetresPerInch * dpi;
    return { Limits::toInt(dots.width()), Limits::toInt(dots.height()) };
}

void LabelDocument::setPaper(const QColor &color)
{
    m_paper = color;
    for (const auto &item : m_items)
        setBackground(*item, color);
}

Item *LabelDocument::addItem(std::unique_ptr<Item> item)
{
    setBackground(*item, m_paper);
    m_items.push_back(std::move(item));
    return m_items.back().get();
}

void LabelDocument::replaceItem(std::size_t place, std::unique_ptr<Item> item)
{
    setBackground(*item, m_paper);
    m_items[place] = std::move(item);
}

LabelDocument LabelDocument::withoutItems() const
{
    LabelDocument document;
    document.m_pageSize = m_pageSize;
    document.m_designDpi = m_designDpi;
    document.m_inks = m_inks;
    document.m_paper = m_paper;
    document.m_dither = m_dither;
    document.m_sources = m_sources;
    return document;
}

Problems LabelDocument::problems() const
{
    ProblemLog log({});
    checkRange(m_pageSize.width(), LabelLimits::MinPageSide, LabelLimits::MaxPageSide, u"/page/width"_s, log);
    checkRange(
        m_pageSize.height(), LabelLimits::MinPageSide, LabelLimits::MaxPageSide, u"/page/height"_s, log);
    checkRange(m_designDpi, LabelLimits::MinDpi, LabelLimits::MaxDpi, u"/page/dpi"_s, log);
    log.add(InkRules::problems(m_inks, m_paper));
    log.add(DataSources::problems(m_sources));
    DocumentRules::acceptsItemCount(ItemTree::count(*this), u"/items"_s, log);
    for (std::size_t i = 0; i < m_items.size(); ++i)
        ItemMap::checkTree(*m_items[i], JsonPointer::element(u"/items"_s, qsizetype(i)), 1, log);
    return log.problems();
}
