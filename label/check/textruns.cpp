// SPDX-License-Identifier: BSD-3-Clause
#include "label/check/textruns.h"

#include "items/barcode/barcodeitem.h"
#include "items/text/textitem.h"

#include <QTextBlock>
#include <QTextDocument>

namespace {

QList<TextRuns::Run> runsOf(const QTextDocument &document)
{
    QList<TextRuns::Run> runs;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            if (!fragment.charFormat().isImageFormat())
                runs.append(
                    { fragment.charFormat().font().resolve(document.defaultFont()), fragment.text() });
        }
    }
    return runs;
}

} // namespace

QList<TextRuns::Run> TextRuns::of(const Item &item)
{
    if (const auto *text = dynamic_cast<const TextItem *>(&item))
        return runsOf(*text->document());
    const auto *barcode = dynamic_cast<const BarcodeItem *>(&item);
    if (!barcode || barcode->getBarcodeHideText())
        return {};
    const QString line = barcode->getBarcodeEncodedText();
    return line.isEmpty() ? QList<Run>() : QList<Run> { { QFont(barcode->getItemFontFamily()), line } };
}
