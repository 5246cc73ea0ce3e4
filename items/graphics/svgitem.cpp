// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/svgitem.h"

#include "items/core/basicconversions.h"
#include "items/core/mirrorscope.h"
#include "items/core/safeimage.h"
#include "items/graphics/emptysvg.h"
#include "items/graphics/scaledcontent.h"
#include "items/graphics/svgguard.h"
#include "items/graphics/svgwalk.h"
#include "platform/logging/cutemessagelogger.h"

#include <QDomDocument>
#include <QFileInfo>
#include <QPainter>
#include <QPainterPath>
#include <QSvgRenderer>

#include <utility>

SvgItem::SvgItem()
    : m_drawing(*this)
{
    setItemShape(MobraTypes::SvgShape);
    setItemFlags(MobraTypes::FlagImagePrint, true);
    setFlags(ItemIsMovable | ItemIsSelectable | ItemIsFocusable | ItemClipsToShape | ItemStacksBehindParent);
}

SvgItem::~SvgItem() = default;

QString SvgItem::toDescriptionString() const
{
    return QStringLiteral("Svg %1\n").arg(itemId());
}

QPainterPath SvgItem::opaqueArea() const
{
    QPainterPath path;
    if (!getImageHasTransparency())
        path.addRect(boundingRect());
    return path;
}

void SvgItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget)
{
    m_drawing.paint(*this, painter, option, widget);
    paintSelectionFrame(painter, option, boundingRect());
}

// --- the drawing

bool SvgItem::loadItemFromFile(const QByteArray &path)
{
    return accept(readFile(path) && checkXmlOnLoad() && showAtOwnSize(), true);
}

bool SvgItem::loadItemFromData(const QByteArray &svg)
{
    m_contents = svg;
    removeColorPrefix();
    return accept(checkXmlOnLoad() && showAtOwnSize(), false);
}

/// Whether the file gave anything to look at.
bool SvgItem::readFile(const QByteArray &path)
{
    const std::optional<QByteArray> contents = SvgDrawing::read(path);
    if (!contents)
        return false;
    m_contents = *contents;
    const bool compressed = QFileInfo(QString::fromUtf8(path)).suffix().toLower() == QLatin1String("svgz");
    if (!compressed)
        removeColorPrefix();
    return !compressed || !m_contents.isEmpty();
}

bool SvgItem::showAtOwnSize()
{
    const bool shown = m_drawing.load(m_contents);
    storeItemSize(boundingRect().size());
    return shown;
}

/// The end of every load: what was not accepted gives way to the empty drawing. Returns accepted.
bool SvgItem::accept(bool accepted, bool transparent)
{
    if (accepted) {
        setImageIsInvalid(false);
        setImageHasTransparency(transparent);
    } else {
        setErrorSvg();
    }
    return accepted;
}

bool SvgItem::reloadItemFromFile(const QByteArray &path)
{
    const QSizeF frame = getItemSize();
    loadItemFromFile(path);
    setItemSizeOnUpdate(frame);
    return true;
}

bool SvgItem::reloadItemFromData(const QByteArray &svg)
{
    const QSizeF frame = getItemSize();
    const bool loaded = loadItemFromData(svg);
    setItemSizeOnUpdate(frame);
    return loaded;
}

void SvgItem::setErrorSvg()
{
    m_contents = EmptySvg::getEmptySvg();
    showAtOwnSize();
    setImageIsInvalid(true);
    setImageHasTransparency(true);
    update();
}

void SvgItem::removeColorPrefix()
{
    constexpr int prefixes = 2;
    constexpr qsizetype prefixLength = 7;
    for (int i = 0; i < prefixes && m_contents.size() > prefixLength && m_contents.startsWith('#'); ++i)
        m_contents.remove(0, prefixLength);
}

bool SvgItem::recursiveCheckAttributesForInvalidImages(const QDomNode &node)
{
    const QByteArray problem = SvgWalk::problemOf(node);
    if (problem.isEmpty())
        return true;
    constexpr int level = 1;
    CuteMessageLogger(level, "svgitem", __LINE__, Q_FUNC_INFO).write("%s", problem.constData());
    return false;
}

bool SvgItem::checkXmlOnLoad() const
{
    const std::optional<QByteArray> text = SvgGuard::inflated(m_contents);
    if (!text)
        return false;
    if (!SvgWalk::mayHaveImages(*text))
        return true;
    // A tree takes far longer to make of a hostile text than the guard takes to refuse it.
    if (SvgGuard::check(*text).verdict == SvgGuard::Verdict::Refused)
        return false;
    // Of a text with an error the part before it is looked at: that much is drawn, too. Links are known by
    // their full name, which a reader of namespaces would take apart.
    QDomDocument document;
    document.setContent(*text, false);
    return recursiveCheckAttributesForInvalidImages(document.documentElement().firstChild());
}

void SvgItem::checkForTransparency()
{
    constexpr double longest = 13824.0;
    double width = getItemWidth();
    double height = getItemHeight();
    adjustSizes(width, height, 1.0, longest, 1.0, longest, width / height);
    QImage image = SafeImage::create(width, height, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) {
        setImageHasTransparency(true); // which is never wrong
        return;
    }
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer()->render(&painter, image.rect());
    painter.end();
    checkTransparency(image);
}

QVariant SvgItem::getSvgContents() const
{
    return QString::fromLatin1(m_contents.toBase64());
}

void SvgItem::setSvgContents(const QVariant &svgContents)
{
    m_contents = QByteArray::fromBase64(svgContents.toByteArray());
}

void SvgItem::setItemData(const QVariant &data)
{
    const QByteArray bytes = data.toByteArray();
    if (SvgDrawing::isDrawing(data))
        reloadItemFromData(bytes);
    else
        reloadItemFromFile(bytes);
}

// --- size and place

bool SvgItem::applySize(const QSizeF &size)
{
    Item::applySize(size);
    ScaledContent::followSize(*this);
    prepareGeometryChange();
    return true;
}

bool SvgItem::setItemSizeOnUpdate(const QSizeF &size)
{
    const bool changed = ScaledContent::fit(*this, size);
    prepareGeometryChange();
    return changed;
}

void SvgItem::setItemRotation(double degrees)
{
    m_rotation = BasicConversions::normalizeAngle(degrees);
    ScaledContent::followRotation(*this);
    prepareGeometryChange();
}

// --- printing

bool SvgItem::resetItemColors(const QColor & /*printColor*/, bool /*keepBlack*/, bool /*keepOthers*/)
{
    return false;
}

bool SvgItem::resetItemColorsNegative(const QColor & /*printColor*/)
{
    return false;
}

QImage SvgItem::createItemImage(
    QGraphicsItem *item, const unsigned int &rgbFill, const QRectF &printRect, double scale)
{
    if (getImageIsInvalid())
        return {};
    setShouldPrintRaw(printRect.contains(sceneBoundingRect()) && !getImageHasTransparency());
    if (!getShouldPrintRaw())
        return ImageableItem::createItemImage(item, rgbFill, printRect, scale);
    setRgbFillColor(rgbFill);
    setCalculatedItemPosition(pos() * scale);
    QImage image = ownImage(rgbFill, scale);
    setImageSize(image.size());
    return image;
}

/// The drawing alone, in the item's size; a null image beyond the limits.
QImage SvgItem::ownImage(QRgb fill, double scale)
{
    QImage image = SafeImage::create(
        getItemWidth() * scale, getItemHeight() * scale, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return image;
    image.fill(qPremultiply(fill));
    QPainter painter(&image);
    const MirrorScope mirrored(*this, painter, image.width(), image.height());
    renderer()->render(&painter, image.rect());
    return image;
}

bool SvgItem::addItemImageToScene(QGraphicsScene *scene, double z, int index)
{
    setImageTransform(getShouldPrintRaw() ? getItemUnitTransform() : QTransform());
    return ImageableItem::addItemImageToScene(scene, z, index);
}
