// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/batchhead.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

QString nameOf(BatchOptions::Format format)
{
    switch (format) {
    case BatchOptions::Format::Png:
        return u"png"_s;
    case BatchOptions::Format::Pbm:
        return u"pbm"_s;
    case BatchOptions::Format::Pdf:
        return u"pdf"_s;
    case BatchOptions::Format::PdfPlates:
        return u"pdf-plates"_s;
    }
    return {};
}

void addAdjustment(const PrintAdjustment &adjustment, QJsonObject &head)
{
    if (adjustment.rotation != 0)
        head.insert(u"rotation"_s, adjustment.rotation);
    if (adjustment.mirror)
        head.insert(u"mirror"_s, true);
    if (adjustment.offset != LengthPair())
        head.insert(u"offset"_s, adjustment.offset.text());
    if (adjustment.scale != 1.0)
        head.insert(u"scale"_s, adjustment.scale);
    if (adjustment.keepBlack)
        head.insert(u"keep black"_s, true);
    if (!adjustment.replacements.isEmpty())
        head.insert(u"map"_s, InkReplacement::text(adjustment.replacements));
}

QJsonObject sheetOf(const SheetOptions &sheet)
{
    QJsonObject json { { u"size"_s, sheet.size.text() }, { u"start"_s, sheet.start },
        { u"gap"_s, sheet.gap.text() }, { u"crop marks"_s, sheet.cropMarks } };
    if (sheet.cells)
        json.insert(u"cells"_s, u"%1x%2"_s.arg(sheet.cells->width()).arg(sheet.cells->height()));
    if (sheet.margin)
        json.insert(u"margin"_s, sheet.margin->text());
    return json;
}

} // namespace

QJsonObject BatchHead::of(const BatchOptions &options, bool tellsTime)
{
    const SeparationOptions &separation = options.separation;
    QJsonObject head { { u"label"_s, QString::fromLatin1(options.labelDigest) },
        { u"resolution"_s, separation.dpi }, { u"format"_s, nameOf(options.format) } };
    if (options.pdf.isEmpty())
        head.insert(u"pattern"_s, QFileInfo(options.pattern).fileName());
    else
        head.insert(u"pdf"_s, QFileInfo(options.pdf).fileName());
    if (options.shard != Shard())
        head.insert(u"shard"_s, u"%1/%2"_s.arg(options.shard.index).arg(options.shard.count));
    if (!options.keyColumn.isEmpty())
        head.insert(u"key"_s, options.keyColumn);
    if (!options.copiesColumn.isEmpty())
        head.insert(u"copies"_s, options.copiesColumn);
    if (separation.negative)
        head.insert(u"negative"_s, true);
    if (separation.overprint)
        head.insert(u"overprint"_s, true);
    if (separation.dither)
        head.insert(u"dithering"_s, DitherNames::of(*separation.dither));
    if (!separation.layers.isEmpty())
        head.insert(u"layers"_s, separation.layers.join(u','));
    addAdjustment(options.adjustment, head);
    if (options.sheet)
        head.insert(u"sheet"_s, sheetOf(*options.sheet));
    if (tellsTime)
        head.insert(u"begin"_s, options.begin.toString(Qt::ISODate));
    return head;
}
