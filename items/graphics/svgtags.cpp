// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/svgtags.h"

#include <QXmlStreamReader>

#include <algorithm>

namespace {

/// Whether a quote follows, as it does in every attribute; the zeros are those of wide characters.
bool isBeforeQuote(const char *at, const char *end)
{
    const char *quote = std::find_if(
        at, end, [](char c) { return c != ' ' && c != '\t' && c != '\n' && c != '\r' && c != '\0'; });
    return quote != end && (*quote == '"' || *quote == '\'');
}

} // namespace

SvgTags::Attributes SvgTags::attributesOf(const QByteArray &text)
{
    Attributes attributes;
    qsizetype count = 0;
    const auto endTag = [&] {
        attributes.most = std::max(attributes.most, count);
        attributes.work += qint64(count) * count;
        count = 0;
    };
    // A '>' does not end the count: that may be within a value.
    const char *const end = text.cend();
    for (const char *at = text.cbegin(); at != end; ++at) {
        if (*at == '<')
            endTag();
        else if (*at == '=' && isBeforeQuote(at + 1, end))
            ++count;
    }
    endTag();
    return attributes;
}

bool SvgTags::beginsWithin(const QByteArray &text, qsizetype bytes)
{
    if (text.size() <= bytes)
        return true;
    QXmlStreamReader reader(QByteArray::fromRawData(text.constData(), bytes));
    reader.setNamespaceProcessing(false);
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement)
            return true;
    }
    // Anything but the end of these bytes stops the renderer as well.
    return reader.error() != QXmlStreamReader::PrematureEndOfDocumentError;
}
