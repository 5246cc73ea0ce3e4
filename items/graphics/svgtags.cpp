// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/svgtags.h"

#include <QRegularExpression>
#include <QXmlStreamReader>

#include <algorithm>

using namespace Qt::StringLiterals;

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

bool SvgTags::isInKnownEncoding(const QByteArray &text)
{
    constexpr qsizetype longestDeclaration = 4'096;
    QXmlStreamReader reader(
        QByteArray::fromRawData(text.constData(), std::min(text.size(), longestDeclaration)));
    reader.setNamespaceProcessing(false);
    if (reader.readNext() != QXmlStreamReader::StartDocument)
        return text.size() <= longestDeclaration
            || reader.error() != QXmlStreamReader::PrematureEndOfDocumentError;
    const QString encoding = reader.documentEncoding().toString().toLower();
    static const QRegularExpression known(
        u"^(|utf-?(8|16|16le|16be|32|32le|32be)|(us-)?ascii|iso-?8859-?[0-9]+|latin-?1|windows-125[0-9])$"_s);
    return known.match(encoding).hasMatch();
}

bool SvgTags::mayHold(const QByteArray &text, const char *word)
{
    // Zeros are between the letters of wide characters, and an entity may hold anything.
    const QByteArrayView begin = QByteArrayView(text).first(std::min<qsizetype>(text.size(), 4));
    return begin.contains('\0') || begin.contains('\xFE') || text.contains("<!ENTITY") || text.contains(word);
}
