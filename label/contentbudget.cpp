// SPDX-License-Identifier: BSD-3-Clause
#include "label/contentbudget.h"

#include "items/graphics/pixmapitem.h"
#include "items/graphics/svgitem.h"
#include "items/graphics/symbolitem.h"
#include "items/text/safetextdocument.h"
#include "items/text/textitem.h"
#include "label/problemlog.h"
#include "label/wording.h"

using namespace Qt::StringLiterals;

namespace {

qint64 contentBytes(const Item &item)
{
    if (const auto *picture = dynamic_cast<const PixMapItem *>(&item)) {
        const QPixmap pixmap = picture->pixmap();
        return qint64(pixmap.width()) * pixmap.height() * pixmap.depth() / 8;
    }
    if (const auto *svg = dynamic_cast<const SvgItem *>(&item))
        return svg->drawingMemory();
    if (const auto *symbol = dynamic_cast<const SymbolItem *>(&item))
        return symbol->drawingMemory();
    const auto *text = dynamic_cast<const TextItem *>(&item);
    const auto *document = text ? qobject_cast<const SafeTextDocument *>(text->document()) : nullptr;
    return document ? document->pictureMemory() : 0;
}

QString megabytes(qint64 bytes)
{
    constexpr qint64 megabyte = 1'000'000;
    return QString::number((bytes + megabyte - 1) / megabyte);
}

} // namespace

bool ContentBudget::take(const Item &item, const QString &where, ProblemLog &log)
{
    const qint64 bytes = contentBytes(item);
    if (m_taken + bytes <= m_most) {
        m_taken += bytes;
        return true;
    }
    log.add(where,
        u"%1 would take the pictures and drawings of the label to %2 MB of memory"_s.arg(
            Wording::item(item), megabytes(m_taken + bytes)),
        u"use smaller pictures: a label holds at most %1 MB"_s.arg(megabytes(m_most)));
    return false;
}
