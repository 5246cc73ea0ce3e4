// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/simpletextitem.h"

#include "items/core/basicconversions.h"
#include "items/core/itemtexts.h"
#include "items/core/limits.h"
#include "items/text/layoutpause.h"
#include "items/text/verticalediting.h"
#include "items/text/verticaltext.h"
#include "platform/text/whitespace.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QTextCursor>
#include <QTextDocumentFragment>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

/// Scales that differ by no more are the same.
constexpr double scaleEpsilon = 1e-12;

QTransform aboutCentre(const QPointF &centre, double degrees, double scaleX, double scaleY)
{
    QTransform transform;
    transform.translate(centre.x(), centre.y());
    transform.rotate(degrees);
    transform.scale(scaleX, scaleY);
    transform.translate(-centre.x(), -centre.y());
    return transform;
}

/// Sets a side to that of the scaled text or, if it is fixed, the scale to that which the side needs. A text
/// without extent leaves the scale, since from none no later text could lead back.
void fitSide(bool fixed, double natural, double &side, double &scale)
{
    if (!fixed)
        side = natural * scale;
    else if (natural > Limits::MinDivisor)
        scale = side / natural;
}

} // namespace

QFont SimpleTextItem::fontOf(const QString &family, int pixelSize)
{
    QFont font;
    font.setFamily(family);
    if (pixelSize > 0)
        font.setPixelSize(pixelSize);
    return font;
}

SimpleTextItem::SimpleTextItem()
{
    setItemShape(MobraTypes::LabelTextShape);
    setDefaultTextColor(getItemPenColor());
    {
        const LayoutPause pause(*document());
        QFont font = fontOf(defaultFontFamily, defaultPixelSize);
        font.setWeight(QFont::Bold);
        setFont(font);
        setPlainText(tr("TEXT"));
        setAlignmentOption(Qt::AlignHCenter | Qt::AlignVCenter);
    }
    storeItemSize(naturalSize());
    setTextWidth(getItemWidth());
    noteFit();
    connectDocument();
}

SimpleTextItem::~SimpleTextItem() = default;

QString SimpleTextItem::toDescriptionString() const
{
    return QStringLiteral("Label Text %1").arg(itemId());
}

QRectF SimpleTextItem::boundingRect() const
{
    const double pad = isInEditing() ? getTextEditPad() : 0.0;
    double x = itemPen().width();
    double y = x;
    if (m_wasResized) {
        x = itemPen().widthF() / Limits::divisor(getItemScaleX());
        y = itemPen().widthF() / Limits::divisor(getItemScaleY());
    }
    x = std::max(x, pad);
    return QGraphicsTextItem::boundingRect().adjusted(-x, -y, x, y);
}

// --- text

void SimpleTextItem::setItemTextColor(const QColor &color)
{
    TextItem::setItemTextColor(color);
    setDefaultTextColor(color);
}

int SimpleTextItem::countNewLinesInText(const QString &text)
{
    return int(text.count(u'\n'));
}

int SimpleTextItem::determineCursorPositionForVerticalText(int position, int added, const QString &text)
{
    return std::min(2 * (position / 2 + added), int(text.size()));
}

QString SimpleTextItem::convertHorizontalTextToVertical(const QString &text)
{
    return VerticalText::fromHorizontal(text);
}

QString SimpleTextItem::convertVerticalTextToHorizontal() const
{
    return VerticalText::toHorizontal(toPlainText());
}

bool SimpleTextItem::setTextVertical(bool setVert)
{
    if (setVert == m_vertical)
        return false;
    m_vertical = setVert;
    if (WhiteSpace::isWhiteSpace(toPlainText())) {
        setPlainText(QString());
        updateTextOnPropertyChanges(-1, -1, -1);
    } else {
        changeDocument([&] {
            setPlainText(
                setVert ? convertHorizontalTextToVertical(toPlainText()) : convertVerticalTextToHorizontal());
        });
    }
    return true;
}

void SimpleTextItem::changeDocument(const std::function<void()> &change)
{
    {
        const QuietDocument quiet(*this);
        const LayoutPause pause(*document());
        change();
        setTextWidth(-1);
    }
    updateTextOnPropertyChanges(-1, -1, -1);
}

void SimpleTextItem::showText(const QString &text)
{
    setItemText(text);
    if (!m_vertical)
        return;
    const QString shown = toPlainText();
    setPlainText(WhiteSpace::isWhiteSpace(shown) ? QString() : convertHorizontalTextToVertical(shown));
}

void SimpleTextItem::setItemData(const QVariant &data)
{
    const QRectF before = sceneBoundingRect();
    const QString text = ItemTexts::withoutMarker(data.toString());
    if (text != toPlainText()) {
        changeDocument([&] { showText(text); });
        Q_EMIT textItemHasChanged();
    }
    updateScene(before);
}

// --- font and alignment

int SimpleTextItem::getItemFontSize() const
{
    return m_wasResized ? -1 : getItemPositiveFontSize();
}

void SimpleTextItem::setItemFontSize(int size)
{
    if (size < 1)
        return;
    const QRectF before = sceneBoundingRect();
    const QPointF centre = mapToScene(boundingRect().center());
    releaseSize();
    QFont changed = font();
    changed.setPixelSize(size);
    useFont(changed);
    updateTextOnPropertyChanges(-1, -1, -1);
    // The size that was released had another centre than the text.
    if (isPinned())
        moveItem(pos() + centre - mapToScene(boundingRect().center()));
    updateScene(before);
}

void SimpleTextItem::releaseSize()
{
    m_sizeLimiting = 0;
    if (!m_wasResized)
        return;
    setItemScaleX(1.0);
    setItemScaleY(1.0);
    const QSizeF half = getItemSize() / 2.0;
    updateTransformOnRotation(this, half.width(), half.height(), getItemRotation(), 1.0, 1.0);
    m_wasResized = false;
}

void SimpleTextItem::changeFont(const QFont &font)
{
    const QRectF before = sceneBoundingRect();
    changeDocument([&] { setFont(font); });
    updateScene(before);
}

void SimpleTextItem::setItemFontFamily(const QString &family)
{
    QFont changed = font();
    changed.setFamily(family);
    changeFont(changed);
}

void SimpleTextItem::setItemBold(bool bold)
{
    QFont changed = font();
    changed.setBold(bold);
    changeFont(changed);
}

void SimpleTextItem::setItemItalic(bool italic)
{
    QFont changed = font();
    changed.setItalic(italic);
    changeFont(changed);
}

void SimpleTextItem::setItemUnderline(bool underline)
{
    QFont changed = font();
    changed.setUnderline(underline);
    changeFont(changed);
}

Qt::Alignment SimpleTextItem::getItemAlignment() const
{
    return document()->defaultTextOption().alignment();
}

void SimpleTextItem::setAlignmentOption(Qt::Alignment alignment)
{
    QTextOption option = document()->defaultTextOption();
    option.setAlignment(alignment);
    document()->setDefaultTextOption(option);
}

void SimpleTextItem::setItemAlignment(Qt::Alignment alignment)
{
    const QRectF before = sceneBoundingRect();
    changeDocument([&] { setAlignmentOption(alignment); });
    updateScene(before);
}

void SimpleTextItem::setItemAlignmentInt(uint alignment)
{
    setItemAlignment(Qt::Alignment::fromInt(int(alignment & alignmentMask)));
}

void SimpleTextItem::importTextProperties(const QString &family, int pixelSize, bool bold, bool italic,
    bool underline, const Qt::Alignment &alignment)
{
    QFont imported = fontOf(family, pixelSize);
    imported.setBold(bold);
    imported.setItalic(italic);
    imported.setUnderline(underline);
    changeFont(imported);
    setItemAlignment(alignment);
}

// --- place and size

void SimpleTextItem::setLimit(signed char bit, bool on)
{
    m_sizeLimiting = static_cast<signed char>(on ? m_sizeLimiting | bit : m_sizeLimiting & ~bit);
}

void SimpleTextItem::setItemDocumentMargin(double margin)
{
    document()->setDocumentMargin(Limits::geometry(margin));
    setDocument(document());
    updateTextOnPropertyChanges(-1, -1, -1);
}

void SimpleTextItem::enlargeSize(double width)
{
    storeItemSize(getItemSize() + QSizeF(width, width));
}

bool SimpleTextItem::applySize(const QSizeF &size)
{
    // The outline grows and shrinks with the text, so the scales are those of the sizes that include it.
    const double outline = itemPen().width();
    enlargeSize(outline);
    TextItem::applySize(size + QSizeF(outline, outline));
    const QSizeF natural = QGraphicsTextItem::boundingRect().size() + QSizeF(outline, outline);
    setItemScaleX(Limits::usableScale(getItemScaleX(), getItemWidth(), natural.width()));
    setItemScaleY(Limits::usableScale(getItemScaleY(), getItemHeight(), natural.height()));
    updateTransform(false);
    enlargeSize(-outline);
    m_wasResized = true;
    updateItemPen();
    return true;
}

void SimpleTextItem::updateFramePads()
{
    const double width = itemPen().widthF();
    const double x = width / Limits::divisor(getItemScaleX());
    const double y = width / Limits::divisor(getItemScaleY());
    const bool even = BasicConversions::almostEqual(getItemScaleX(), getItemScaleY(), scaleEpsilon);
    setFramePads(QSizeF(x, even ? x : y));
}

void SimpleTextItem::updateItemPen()
{
    TextItem::updateItemPen();
    updateFramePads();
    updateItemBrush(); // a gradient fills the bounding rectangle, which includes the outline
    prepareGeometryChange();
}

void SimpleTextItem::setItemRotation(double degrees)
{
    m_rotation = BasicConversions::normalizeAngle(degrees);
    updateTransform(true);
}

void SimpleTextItem::updateTransform(bool keepCentre)
{
    const double sx = getItemScaleX();
    const double sy = getItemScaleY();
    if (!isPinned() && !keepCentre) {
        updateTransformOnResize(this, getItemWidth() / 2.0, getItemHeight() / 2.0, getItemRotation(), sx, sy);
        prepareGeometryChange();
        return;
    }
    const QPointF centre = boundingRect().center();
    const QPointF before = mapToScene(centre);
    if (isPinned()) {
        setItemTransform(aboutCentre(centre, getItemRotation(), sx, sy));
        setOldTransformCoefficientM31(transform().m31());
        setOldTransformCoefficientM32(transform().m32());
    } else {
        updateTransformOnRotation(this, centre.x(), centre.y(), getItemRotation(), sx, sy);
    }
    const QPointF shift = before - mapToScene(centre);
    if (!shift.isNull()) {
        setPositionChangeOnX(shift.x());
        setPositionChangeOnY(shift.y());
        moveItem(pos() + shift);
    }
    prepareGeometryChange();
}

void SimpleTextItem::resetTransform()
{
    setPositionChangeOnX(0.0);
    setPositionChangeOnY(0.0);
    setOldTransformCoefficientM31(0.0);
    setOldTransformCoefficientM32(0.0);
    m_rotation = 0.0;
    setItemScaleX(1.0);
    setItemScaleY(1.0);
    m_wasResized = false;
    m_sizeLimiting = 0;
    setFramePads(QSizeF(0.0, 0.0));
    setTransform(QTransform());
    fitItemToContents();
    noteFit();
    prepareGeometryChange();
}

void SimpleTextItem::adjustForPinToCenter(const QPointF &p)
{
    const double radians = getItemRotation() * std::numbers::pi / 180.0;
    const double dx = p.x() - getItemWidth() * 0.5;
    const double dy = p.y() - getItemHeight() * 0.5;
    moveItem(pos()
        + QPointF(dx * std::cos(radians) - dy * std::sin(radians),
            dx * std::sin(radians) + dy * std::cos(radians)));
}

void SimpleTextItem::updateTextOnPropertyChanges(int position, int charsRemoved, int charsAdded)
{
    if (m_refitting)
        return;
    m_refitting = true;
    if (m_vertical && position >= 0)
        updateTextOnPropertyChangesForVerticalText(position, charsRemoved, charsAdded);
    // Qt tells of an edit before it lays it out, which this does too.
    if (position >= 0)
        setTextWidth(-1);
    refit();
    m_refitting = false;
}

void SimpleTextItem::refit()
{
    const bool pinned = m_pinToCenter && !parentItem();
    const QPointF before = mapToScene(QRectF(QPointF(), m_fittedSize).center());

    const QSizeF natural = naturalSize();
    fitSides(natural);
    setTextWidth(natural.width());
    updateItemPen();
    if (m_sizeLimiting != 0) {
        m_wasResized = true;
        updateFramePads();
        updateTransform(false);
    }
    if (pinned)
        moveItem(pos() + before - mapToScene(QGraphicsTextItem::boundingRect().center()));
    noteFit();
    prepareGeometryChange();
}

void SimpleTextItem::fitSides(const QSizeF &natural)
{
    // With the outline, as in stretching.
    const double outline = itemPen().width();
    double width = getItemWidth() + outline;
    double height = getItemHeight() + outline;
    double scaleX = getItemScaleX();
    double scaleY = getItemScaleY();
    fitSide(getItemFixedSizeWidth(), natural.width() + outline, width, scaleX);
    fitSide(getItemFixedSizeHeight(), natural.height() + outline, height, scaleY);
    setItemScaleX(scaleX);
    setItemScaleY(scaleY);
    storeItemSize(QSizeF(width - outline, height - outline));
}

void SimpleTextItem::noteFit()
{
    m_fittedSize = QGraphicsTextItem::boundingRect().size();
}

// --- painting

void SimpleTextItem::drawFrame(QPainter *painter)
{
    if (itemPen().style() == Qt::NoPen)
        return;
    const QRectF text = QGraphicsTextItem::boundingRect();
    const QSizeF pads = getFramePads();
    QPen pen = itemPen();
    pen.setCapStyle(Qt::FlatCap);
    pen.setJoinStyle(Qt::MiterJoin);
    pen.setWidthF(Limits::penWidth(pads.width()));
    painter->setPen(pen);
    if (BasicConversions::almostEqual(getItemScaleX(), getItemScaleY(), scaleEpsilon)) {
        const double outside = pads.width() / 2.0;
        painter->drawRect(text.adjusted(-outside, -outside, outside, outside));
        return;
    }
    const QRectF outer = text.adjusted(-pads.width(), -pads.height(), pads.width(), pads.height());
    const double left = text.left() - pads.width() / 2.0;
    const double right = text.right() + pads.width() / 2.0;
    painter->drawLine(QPointF(left, outer.top()), QPointF(left, outer.bottom()));
    painter->drawLine(QPointF(right, outer.top()), QPointF(right, outer.bottom()));
    pen.setWidthF(Limits::penWidth(pads.height()));
    painter->setPen(pen);
    const double top = text.top() - pads.height() / 2.0;
    const double bottom = text.bottom() + pads.height() / 2.0;
    painter->drawLine(QPointF(outer.left(), top), QPointF(outer.right(), top));
    painter->drawLine(QPointF(outer.left(), bottom), QPointF(outer.right(), bottom));
}

// --- editing

void SimpleTextItem::createMimeDataFromSelection()
{
    const QTextCursor cursor = textCursor();
    const QString selected
        = m_vertical ? VerticalEditing(cursor).selectedText() : cursor.selection().toPlainText();
    if (!selected.isEmpty())
        QGuiApplication::clipboard()->setText(selected);
}

void SimpleTextItem::textPaste()
{
    const QString text = clipboardText();
    if (!text.isEmpty())
        replaceSelection(text);
}

void SimpleTextItem::replaceSelection(const QString &text)
{
    if (!m_vertical) {
        TextItem::replaceSelection(text);
        return;
    }
    VerticalEditing editing(textCursor());
    editing.insert(text);
    setTextCursor(editing.cursor());
}

void SimpleTextItem::keyPressEvent1(QKeyEvent *event)
{
    if (m_vertical) {
        VerticalEditing editing(textCursor());
        if (editing.press(*event)) {
            setTextCursor(editing.cursor());
            return;
        }
    }
    TextItem::keyPressEvent1(event);
}

void SimpleTextItem::keyReleaseEvent(QKeyEvent *event)
{
    QGraphicsTextItem::keyReleaseEvent(event);
}

void SimpleTextItem::updateTextOnPropertyChangesForVerticalText(
    int /*position*/, int /*charsRemoved*/, int /*charsAdded*/)
{
    // What is undone or redone was shown before, and changing it would end the redoing.
    if (document()->isRedoAvailable())
        return;
    const QuietDocument quiet(*this);
    const QTextCursor cursor = textCursor();
    // While another text is set, the item has no cursor.
    VerticalEditing editing(cursor.isNull() ? QTextCursor(document()) : cursor);
    editing.restack();
    if (!cursor.isNull())
        setTextCursor(editing.cursor());
}
