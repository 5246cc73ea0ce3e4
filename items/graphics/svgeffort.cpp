// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/svgeffort.h"

#include "items/graphics/svgnumbers.h"
#include "items/graphics/svgoutline.h"

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

/// The pixels of a page's side for which efforts are estimated; one unit are some 8 microseconds then.
constexpr double pagePixels = 400.0;
constexpr double elementEffort = 0.5;
constexpr double levelEffort = 0.001; // for each group around: styles are looked for in all of them
constexpr double farPointEffort = 500.0;
constexpr double dashEffort = 0.1;
constexpr double textEffort = 5.0;
constexpr double letterEffort = 0.5;
constexpr double largeLetterEffort = 50.0;
constexpr double pixelEffort = 1.0 / 5'000.0;
constexpr double glyphByteEffort = 0.01;
constexpr double unbounded = std::numeric_limits<double>::infinity();

QString idOf(const QXmlStreamAttributes &attributes)
{
    const QStringView id = attributes.value("id"_L1);
    return (id.isEmpty() ? attributes.value("xml:id"_L1) : id).toString();
}

/// The area that a drawing shows; none when that follows from what it draws.
QRectF pageOf(const QXmlStreamAttributes &attributes)
{
    SvgNumbers numbers(attributes.value("viewBox"_L1));
    double box[4] = {};
    for (double &value : box)
        value = numbers.hasNumber() ? numbers.number() : 0.0;
    const QRectF viewed(box[0], box[1], std::abs(box[2]), std::abs(box[3]));
    if (!viewed.isEmpty())
        return viewed;
    return QRectF(0.0, 0.0, SvgValues::length(attributes.value("width"_L1), 0.0),
        SvgValues::length(attributes.value("height"_L1), 0.0));
}

/// What it takes to fill an outline of that many pages' lengths, in a box of that size.
double filling(double pages, double width, double height)
{
    constexpr double pixel = 1.0 / pagePixels;
    return pages * std::min(pagePixels * std::max(width, pixel), pages / std::max(height, pixel));
}

/// How much a transform enlarges at most.
double largestScale(const QTransform &t)
{
    return std::max(std::abs(t.m11()) + std::abs(t.m21()), std::abs(t.m12()) + std::abs(t.m22()));
}

double dashesOf(const SvgOutline &outline, const SvgStyle &style)
{
    if (style.dashLength <= 0.0)
        return 0.0;
    // More dashes than that within its bounds Qt draws as a solid line.
    constexpr double mostDashes = 10'000.0;
    const double patterns = style.isCosmetic
        ? (outline.run() + outline.rise()) * 10.0 * pagePixels / style.dashLength
        : std::min(outline.length() / style.dashLength, mostDashes * outline.length() / outline.extent());
    return std::isnan(patterns) ? 0.0 : style.dashes * patterns;
}

} // namespace

SvgEffort::SvgEffort(bool mayRefer)
    : m_mayRefer(mayRefer)
    , m_isFirst(true)
{
    m_knowledge.anywhere.isFilled = false;
    m_knowledge.anywhere.strokeWidth = 0.0;
    m_knowledge.anywhere.fontSize = 0.0;
}

SvgEffort::SvgEffort(const Knowledge &knowledge)
    : m_knowledge(knowledge)
    , m_mayRefer(true)
    , m_isFirst(false)
{
}

QTransform SvgEffort::toPage() const
{
    const QTransform &own = m_open.last().transform;
    if (m_page.isEmpty())
        return own;
    const double scale = m_knowledge.scale;
    return own * QTransform::fromTranslate(-m_page.x(), -m_page.y())
        * QTransform::fromScale(scale / m_page.width(), scale / m_page.height());
}

double SvgEffort::pagesOf(double length) const
{
    const double most = m_page.isEmpty() ? unbounded : 3.0;
    const double pages = length * largestScale(toPage());
    return std::isnan(pages) ? most : std::min(pages, most);
}

/// What is turned may become as much longer as the page is longer in one direction.
double SvgEffort::scaleOf(const QTransform &transform) const
{
    const bool isUpright = transform.m12() == 0.0 && transform.m21() == 0.0;
    // Without a page all lengths are those of elements that fill one.
    if (m_page.isEmpty())
        return 1.0;
    const double ratio = m_page.width() / m_page.height();
    return largestScale(transform) * (isUpright ? 1.0 : std::max(ratio, 1.0 / ratio));
}

void SvgEffort::add(const QXmlStreamReader &reader, const SvgCensus &census)
{
    if (reader.tokenType() == QXmlStreamReader::StartElement) {
        beginElement(reader);
        if (reader.name() == "image"_L1)
            m_references.addEffort(double(census.images()[m_images++].pixels) * pixelEffort);
    } else if (reader.tokenType() == QXmlStreamReader::EndElement) {
        m_open.removeLast();
        m_references.endElement();
    } else if (reader.tokenType() == QXmlStreamReader::Characters && !m_open.isEmpty()) {
        addCharacters(reader.text());
    }
}

void SvgEffort::beginElement(const QXmlStreamReader &reader)
{
    const QXmlStreamAttributes attributes = reader.attributes();
    const QStringView name = reader.name();
    const Element outer = m_open.isEmpty() ? Element() : m_open.last();
    m_references.beginElement(
        m_mayRefer ? idOf(attributes) : QString(), m_mayRefer ? scaleOf(outer.transform.inverted()) : 1.0);
    Element element = outer;
    element.style = outer.style.inside(attributes);
    if (const QStringView transform = attributes.value("transform"_L1); !transform.isEmpty())
        element.transform = SvgValues::transform(transform) * outer.transform;
    if (const QStringView css = attributes.value("style"_L1); css.contains(u"transform", Qt::CaseInsensitive))
        SvgStyleText(css).forEach("transform"_L1,
            [&](QStringView value) { element.transform = SvgValues::transform(value) * outer.transform; });
    element.isText = outer.isText || name == "text"_L1 || name == "textArea"_L1;
    element.isStyle = outer.isStyle || name == "style"_L1;
    m_open.append(element);
    if (m_open.size() == 1)
        m_page = pageOf(attributes);
    const auto groups = std::max(m_open.size() - 2, qsizetype(0)); // around it, within the drawing
    m_references.addEffort((element.isText ? textEffort : elementEffort) + levelEffort * double(groups));
    if (name == "use"_L1)
        refer(attributes);
    else if (name == "glyph"_L1 || name == "missing-glyph"_L1)
        m_glyphBytes = std::max(m_glyphBytes, double(attributes.value("d"_L1).size()));
    else
        addShape(name, attributes);
}

void SvgEffort::refer(const QXmlStreamAttributes &attributes)
{
    // The renderer drops the first character without a look at it.
    const QStringView reference = attributes.value("xlink:href"_L1);
    if (reference.size() < 2)
        return;
    m_references.refer(reference.sliced(1).toString(), scaleOf(m_open.last().transform));
    if (m_isFirst)
        m_knowledge.anywhere = m_knowledge.anywhere.with(m_open.last().style);
}

void SvgEffort::addCharacters(QStringView text)
{
    const Element &element = m_open.last();
    if (element.isStyle)
        addStyleSheet(text);
    if (!element.isText)
        return;
    // Without a page, the text itself makes it wide enough for its letters.
    const double letters = double(text.size());
    const double size = m_page.isEmpty() ? std::min(1.0, 2.0 / letters)
                                         : pagesOf(element.style.with(m_knowledge.anywhere).fontSize);
    m_references.addEffort(
        letters * (letterEffort + largeLetterEffort * size + glyphByteEffort * m_glyphBytes));
}

void SvgEffort::addStyleSheet(QStringView text)
{
    const SvgStyleText sheet(text);
    sheet.addTo(m_knowledge.anywhere);
    sheet.forEach("transform"_L1, [this](QStringView value) {
        m_knowledge.scale = std::max(m_knowledge.scale, largestScale(SvgValues::transform(value)));
    });
}

void SvgEffort::addShape(QStringView name, const QXmlStreamAttributes &attributes)
{
    // What is off the page may be moved onto it where it is referred to.
    const double reach = m_page.isEmpty() ? unbounded : m_mayRefer ? 50.0 : 1.0;
    const auto length = [&](QLatin1StringView attribute) {
        return SvgValues::length(attributes.value(attribute), std::max(m_page.width(), m_page.height()));
    };
    SvgOutline outline(toPage(), reach, m_mayRefer);
    if (name == "path"_L1)
        outline.addPath(attributes.value("d"_L1));
    else if (name == "polygon"_L1 || name == "polyline"_L1)
        outline.addPoints(attributes.value("points"_L1));
    else if (name == "rect"_L1 || name == "image"_L1)
        outline.addRect(QRectF(length("x"_L1), length("y"_L1), length("width"_L1), length("height"_L1)));
    else if (name == "circle"_L1)
        outline.addEllipse(QPointF(length("cx"_L1), length("cy"_L1)), length("r"_L1), length("r"_L1));
    else if (name == "ellipse"_L1)
        outline.addEllipse(QPointF(length("cx"_L1), length("cy"_L1)), length("rx"_L1), length("ry"_L1));
    else if (name == "line"_L1)
        outline.addLine(QPointF(length("x1"_L1), length("y1"_L1)), QPointF(length("x2"_L1), length("y2"_L1)));
    else
        return;
    addOutline(outline);
}

void SvgEffort::addOutline(const SvgOutline &outline)
{
    const SvgStyle style = m_open.last().style.with(m_knowledge.anywhere);
    constexpr double cosmetic = 0.01;
    double strokeWidth = style.isCosmetic ? style.strokeWidth * cosmetic : pagesOf(style.strokeWidth);
    double pages = outline.run() + outline.rise();
    double width = outline.width();
    double height = outline.height();
    double effort = outline.farPoints() * farPointEffort;
    if (m_page.isEmpty()) {
        // The page is at least as large as anything on it.
        const double least = 1e-9;
        pages = outline.run() / std::max(width, least) + outline.rise() / std::max(height, least);
        strokeWidth /= std::max({ width, height, strokeWidth, least });
        width = height = 1.0;
        effort = 0.0;
    }
    if (style.isFilled)
        effort += filling(pages, width, height);
    if (style.isStroked) {
        const double dashes = dashesOf(outline, style);
        // A stroke is filled between its two sides, which meet at each point and at both ends of each dash.
        const double sides = 2.0 * pages + 4.0 * strokeWidth * (outline.points() + dashes);
        effort += dashes * dashEffort + filling(sides, width + strokeWidth, height + strokeWidth);
    }
    // To find out the page, the renderer goes through everything once more.
    m_references.addEffort(m_page.isEmpty() ? 2.0 * effort : effort);
}
