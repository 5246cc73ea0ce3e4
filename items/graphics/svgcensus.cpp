// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/svgcensus.h"

#include "items/core/limits.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The renderer looks at an element's name behind its prefix, whatever that stands for.
bool isNamed(const QXmlStreamReader &reader, QLatin1StringView name)
{
    return reader.name() == name;
}

} // namespace

bool SvgCensus::exceeds(qint64 count, qint64 limit, const char *what)
{
    if (count <= limit)
        return false;
    m_problem = u"it has %1 %2, of which %3 are allowed"_s.arg(count).arg(QLatin1StringView(what)).arg(limit);
    return true;
}

bool SvgCensus::add(const QXmlStreamReader &reader)
{
    switch (reader.tokenType()) {
    case QXmlStreamReader::DTD:
        return addDefinitions(reader);
    case QXmlStreamReader::StartElement:
        return beginElement(reader);
    case QXmlStreamReader::EndElement:
        endElement();
        return true;
    case QXmlStreamReader::Characters:
        return m_stylesOpen == 0 || addStyle(reader.text());
    case QXmlStreamReader::ProcessingInstruction:
        if (reader.processingInstructionTarget() == "xml-stylesheet"_L1 && m_link.isEmpty())
            m_link = u"a processing instruction refers to a style sheet"_s;
        return true;
    default:
        return true;
    }
}

bool SvgCensus::addDefinitions(const QXmlStreamReader &reader)
{
    // A definition has eight characters and more.
    if (reader.text().contains("ATTLIST"_L1))
        m_definedAttributes = reader.text().size() / 8;
    qsizetype longest = 0;
    const QXmlStreamEntityDeclarations entities = reader.entityDeclarations();
    for (const QXmlStreamEntityDeclaration &entity : entities)
        longest = std::max(longest, entity.value().size());
    // The reader does not let one reference come to more than that, but any number of them.
    constexpr qint64 longestExpansion = 4'096;
    constexpr qint64 nesting = 100;
    const qint64 characters = std::min(longestExpansion, longest * nesting) * m_ampersands;
    return !exceeds(characters, Limits::MaxSvgEntityCharacters, "characters in entities");
}

bool SvgCensus::beginElement(const QXmlStreamReader &reader)
{
    ++m_elements;
    m_deepest = std::max(m_deepest, ++m_depth);
    const QXmlStreamAttributes attributes = reader.attributes();
    m_pathBytes += attributes.value("d"_L1).size() + attributes.value("points"_L1).size();
    if (exceeds(m_depth, Limits::MaxSvgDepth, "nested elements")
        || exceeds(m_elements, Limits::MaxSvgElements, "elements")
        || exceeds(m_elements * m_definedAttributes, Limits::MaxSvgDefaultAttributes, "defined attributes")
        || exceeds(m_pathBytes, Limits::MaxSvgPathBytes, "bytes of path data"))
        return false;
    if (isNamed(reader, "stop"_L1) && exceeds(++m_stops, Limits::MaxSvgStops, "stops of gradients"))
        return false;
    const bool isLinkedGradient
        = reader.name().endsWith("Gradient"_L1) && attributes.hasAttribute("xlink:href"_L1);
    if (isLinkedGradient
        && exceeds(++m_linkedGradients, Limits::MaxSvgLinkedGradients, "gradients like others"))
        return false;
    if (m_stylesOpen > 0 || isNamed(reader, "style"_L1))
        ++m_stylesOpen;
    return !isNamed(reader, "image"_L1) || addImage(attributes);
}

void SvgCensus::endElement()
{
    --m_depth;
    m_stylesOpen = std::max(0, m_stylesOpen - 1);
}

bool SvgCensus::addImage(const QXmlStreamAttributes &attributes)
{
    const qint64 before = m_pictures.pixels();
    const SvgPictures::Kind kind = m_pictures.add(attributes.value("xlink:href"_L1));
    const bool isLink = kind == SvgPictures::Kind::Link;
    m_images.append({ isLink, m_pictures.pixels() - before });
    if (isLink && m_link.isEmpty())
        m_link = u"an image is not embedded"_s;
    return !exceeds(m_pictures.pixels(), Limits::MaxSvgImagePixels, "pixels in images");
}

bool SvgCensus::addStyle(QStringView text)
{
    m_styleRules += text.count(u'{') + text.count(u',');
    m_styleDeclarations += text.count(u':');
    return true;
}

bool SvgCensus::finish()
{
    // A selector may be held against all ancestors of an element; a declaration costs a third of a rule.
    const qint64 style = m_styleRules * (1 + m_deepest / 4) + m_styleDeclarations / 3;
    return !exceeds(style * m_elements, Limits::MaxSvgStyleWork, "comparisons with style sheets");
}
