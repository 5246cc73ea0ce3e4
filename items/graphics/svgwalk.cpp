// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/svgwalk.h"

#include <QDomElement>

using namespace Qt::StringLiterals;

namespace {

constexpr double largestArea = 250000.0;

QByteArray problemOfImage(const QDomElement &image)
{
    const QString link = u"xlink:href"_s;
    if (!image.hasAttribute(link))
        return {};
    if (!image.attribute(link).startsWith("data:image/"_L1))
        return "Unable to load svg, it contains an image link";
    const double width = image.attribute(u"width"_s).toDouble();
    const double height = image.attribute(u"height"_s).toDouble();
    if (width * height > largestArea)
        return QByteArrayLiteral("Unable to load svg, it contains a giant embedded image: ")
            + QByteArray::number(width, 'f', 2) + ' ' + QByteArray::number(height, 'f', 2);
    return {};
}

/// The node behind this one in the order of the text, as long as it is below top or a later sibling of it.
QDomNode nextOf(QDomNode node, const QDomNode &top)
{
    if (node.hasChildNodes())
        return node.firstChild();
    const QDomNode end = top.parentNode();
    while (!node.isNull() && node.nextSibling().isNull()) {
        node = node.parentNode();
        if (node == end)
            return {};
    }
    return node.nextSibling();
}

} // namespace

QByteArray SvgWalk::problemOf(const QDomNode &node)
{
    for (QDomNode at = node; !at.isNull(); at = nextOf(at, node)) {
        const QDomElement element = at.toElement();
        if (element.isNull() || element.tagName() != "image"_L1)
            continue;
        const QByteArray problem = problemOfImage(element);
        if (!problem.isEmpty())
            return problem;
    }
    return {};
}

bool SvgWalk::mayHaveImages(const QByteArray &text)
{
    // Of the encodings that are read, those that do not begin as ASCII have zeros in the name. An entity of
    // the document may hold the element in disguise.
    return text.contains("<image") || text.contains('\0') || text.contains("<!ENTITY");
}
