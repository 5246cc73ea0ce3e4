// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/svgguard.h"

#include "items/core/limits.h"
#include "items/graphics/svgcensus.h"
#include "items/graphics/svgtags.h"
#include "items/graphics/svgwriter.h"

#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace {

SvgGuard::Answer refused(const QString &reason)
{
    return { SvgGuard::Verdict::Refused, {}, reason };
}

/// What no reader may see; empty when there is nothing of it.
QString dangerToReaders(const QByteArray &text)
{
    const SvgTags::Attributes attributes = SvgTags::attributesOf(text);
    if (attributes.most > Limits::MaxSvgAttributes || attributes.work > Limits::MaxSvgAttributeWork)
        return u"one of its elements has %1 attributes, of which %2 are allowed"_s.arg(attributes.most)
            .arg(Limits::MaxSvgAttributes);
    if (!SvgTags::beginsWithin(text, Limits::MaxSvgPrologBytes))
        return u"it does not begin within %1 bytes"_s.arg(Limits::MaxSvgPrologBytes);
    return {};
}

/// A reader in the renderer's mode.
class Reader : public QXmlStreamReader
{
public:
    explicit Reader(const QByteArray &text)
        : QXmlStreamReader(text)
    {
        setNamespaceProcessing(false);
    }
};

/// The drawing without its references to files.
QByteArray blanked(const QByteArray &text, const QList<bool> &imagesAreLinks)
{
    SvgWriter writer;
    qsizetype images = 0;
    for (Reader reader(text); !reader.atEnd();) {
        const bool isImage
            = reader.readNext() == QXmlStreamReader::StartElement && reader.name() == "image"_L1;
        if (isImage && imagesAreLinks.value(images++))
            writer.addBlankImage(reader);
        else
            writer.add(reader);
    }
    return writer.text();
}

SvgGuard::Answer examined(const QByteArray &text)
{
    const QString danger = dangerToReaders(text);
    if (!danger.isEmpty())
        return refused(danger);
    SvgCensus census(text.count('&'));
    for (Reader reader(text); !reader.atEnd();) {
        reader.readNext();
        if (!census.add(reader))
            return refused(census.problem());
    }
    if (!census.finish())
        return refused(census.problem());
    if (census.link().isEmpty())
        return { SvgGuard::Verdict::Clean, text, {} };
    return { SvgGuard::Verdict::Links, blanked(text, census.imagesAreLinks()), census.link() };
}

} // namespace

SvgGuard::Answer SvgGuard::check(const QByteArray &bytes)
{
    const std::optional<QByteArray> text = inflated(bytes);
    if (!text)
        return refused(u"it is broken, or larger than %1 bytes"_s.arg(Limits::MaxSvgBytes));
    // The renderer would inflate it again.
    if (text->startsWith("\x1F\x8B"))
        return text->size() == bytes.size() ? refused(u"it is broken"_s)
                                            : refused(u"it is compressed twice"_s);
    return examined(*text);
}
