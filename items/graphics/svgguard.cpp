// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/svgguard.h"

#include "items/core/limits.h"
#include "items/graphics/svgcensus.h"
#include "items/graphics/svgeffort.h"
#include "items/graphics/svgtags.h"
#include "items/graphics/svgwriter.h"

#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace {

SvgGuard::Answer refused(const QString &reason)
{
    return { SvgGuard::Verdict::Refused, {}, reason, 0 };
}

/// What no reader may see; empty when there is nothing of it.
QString dangerToReaders(const QByteArray &text)
{
    if (!SvgTags::isInKnownEncoding(text))
        return u"it is in an encoding that is not read"_s;
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
QByteArray blanked(const QByteArray &text, const QList<SvgCensus::Image> &images)
{
    SvgWriter writer;
    qsizetype image = 0;
    for (Reader reader(text); !reader.atEnd();) {
        const bool isImage
            = reader.readNext() == QXmlStreamReader::StartElement && reader.name() == "image"_L1;
        if (isImage && images[image++].isLink)
            writer.addBlankImage(reader);
        else
            writer.add(reader);
    }
    return writer.text();
}

/// Why the drawing would take too long; empty when it would not.
QString problemOf(const SvgEffort &effort, qint64 elements)
{
    const std::optional<SvgReferences::Total> total = effort.total();
    if (!total)
        return u"one of its elements refers to itself"_s;
    if (total->elements - double(elements) > double(Limits::MaxSvgReferred))
        return u"references draw %1 elements again, of which %2 are allowed"_s
            .arg(total->elements - double(elements))
            .arg(Limits::MaxSvgReferred);
    if (total->levels > Limits::MaxSvgLevels)
        return u"references nest %1 elements, of which %2 are allowed"_s.arg(total->levels)
            .arg(Limits::MaxSvgLevels);
    if (!(total->effort <= Limits::MaxSvgEffort))
        return u"it would take %1 units of time to draw, of which %2 are allowed"_s.arg(total->effort)
            .arg(Limits::MaxSvgEffort);
    return {};
}

SvgEffort secondLook(const QByteArray &text, const SvgEffort &first, const SvgCensus &census)
{
    SvgEffort effort(first.knowledge());
    for (Reader reader(text); !reader.atEnd();) {
        reader.readNext();
        effort.add(reader, census);
    }
    return effort;
}

/// The renderer was seen to take at most 1200 bytes for an element with all styles, 24 for a point of a path,
/// which has three characters or more, and Qt's 4 for a pixel.
qint64 memoryOf(const SvgCensus &census, const QByteArray &text)
{
    constexpr qint64 ofElement = 1'200;
    constexpr qint64 ofCharacter = 8;
    constexpr qint64 ofPixel = 4;
    return ofElement * census.elements() + ofCharacter * text.size() + ofPixel * census.pixels();
}

SvgGuard::Answer examined(const QByteArray &text)
{
    const QString danger = dangerToReaders(text);
    if (!danger.isEmpty())
        return refused(danger);
    SvgCensus census(text.count('&'));
    SvgEffort effort(SvgTags::mayHold(text, "use"));
    for (Reader reader(text); !reader.atEnd();) {
        reader.readNext();
        if (!census.add(reader))
            return refused(census.problem());
        effort.add(reader, census);
    }
    if (!census.finish())
        return refused(census.problem());
    if (effort.isIncomplete())
        effort = secondLook(text, effort, census);
    const QString problem = problemOf(effort, census.elements());
    if (!problem.isEmpty())
        return refused(problem);
    if (census.link().isEmpty())
        return { SvgGuard::Verdict::Clean, text, {}, memoryOf(census, text) };
    return { SvgGuard::Verdict::Links, blanked(text, census.images()), census.link(),
        memoryOf(census, text) };
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
