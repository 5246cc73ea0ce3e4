// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/textitem.h"

#include "items/core/itemcolors.h"
#include "items/core/itemtexts.h"
#include "items/core/limits.h"
#include "items/core/mirrorscope.h"
#include "items/core/safeimage.h"
#include "items/text/documentdrawing.h"
#include "items/text/htmlguard.h"
#include "items/text/layoutpause.h"
#include "items/text/safetextdocument.h"
#include "items/text/textmenu.h"
#include "platform/text/whitespace.h"

#include <QApplication>
#include <QClipboard>
#include <QGraphicsScene>
#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneMouseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainterPath>
#include <QStyleOptionGraphicsItem>
#include <QTextCursor>

#include <algorithm>
#include <cmath>

const QColor TextItem::ORANGE_COLOR(233, 84, 32);
const QString TextItem::defaultFontFamily = ItemTexts::defaultFontFamily;

namespace {

const QColor editWash(244, 166, 9, 25);

/// A line of the width of one pixel in the colour of window texts.
QPen framePen(const QStyleOptionGraphicsItem *option, Qt::PenStyle style)
{
    return QPen(option->palette.windowText(), 0, style, Qt::SquareCap, Qt::BevelJoin);
}

/// Whether text can be drawn: Qt fails to render glyphs that are wide and infinitely thin.
bool showsText(const QTransform &transform)
{
    const double squares = transform.m11() * transform.m11() + transform.m12() * transform.m12()
        + transform.m21() * transform.m21() + transform.m22() * transform.m22();
    return squares <= Limits::MaxTextScale * Limits::MaxTextScale
        && squares <= Limits::MaxTextStretch * std::abs(transform.determinant());
}

bool hasLongWord(QStringView text)
{
    qsizetype length = 0;
    for (const QChar c : text) {
        length = c.isSpace() ? 0 : length + 1;
        if (length > Limits::MaxWordLength)
            return true;
    }
    return false;
}

QColor contrastTo(const QColor &text)
{
    return text == ItemColors::white ? ItemColors::black : ItemColors::white;
}

} // namespace

TextItem::TextItem()
    : m_palette(QApplication::palette("QWidgetTextControl"))
{
    setDocument(new SafeTextDocument);
    m_textColor = ItemColors::black;
    m_penWidth = 0;
    m_penStyle = Qt::SolidLine;
    FillableItem::updateItemPen();
    updateItemBrush();
    setAcceptDrops(false);
    setTextInteractionFlags(Qt::NoTextInteraction);
    // Afterwards, because the interaction takes the focus flag away.
    setFlags(ItemIsMovable | ItemIsSelectable | ItemIsFocusable | ItemStacksBehindParent);
}

TextItem::~TextItem()
{
    QObject::disconnect(document(), nullptr, nullptr, nullptr);
    delete document();
}

bool TextItem::event(QEvent *event)
{
    return QGraphicsObject::event(event);
}

QPainterPath TextItem::shape() const
{
    QPainterPath path;
    path.addRect(boundingRect());
    return path;
}

QPainterPath TextItem::opaqueArea() const
{
    return itemIsOpaque() ? TextItem::shape() : QPainterPath();
}

// --- text and data

void TextItem::setItemText(const QString &newText)
{
    changeText([&] { setPlainText(newText.left(Limits::MaxTextLength)); });
    document()->clearUndoRedoStacks(); // a vertical text has been stacked
}

void TextItem::setItemHtml(const QString &newHtml)
{
    if (auto *safe = qobject_cast<SafeTextDocument *>(document()))
        safe->forgetPictures();
    changeText([&] {
        if (HtmlGuard::accepts(newHtml))
            setHtml(newHtml);
        else
            setPlainText(HtmlGuard::plainTextOf(newHtml));
    });
}

void TextItem::changeText(const std::function<void()> &change)
{
    const int before = document()->characterCount();
    {
        const QuietDocument quiet(*this);
        const LayoutPause pause(*document());
        change();
        wrapFor(toPlainText());
    }
    if (m_quiet > 0)
        return;
    // Only now does the text have its size.
    updateItemOnContentsChange(0, before - 1, document()->characterCount() - 1);
    updateItemOnContentsChanged();
}

void TextItem::wrapFor(QStringView text)
{
    QTextOption option = document()->defaultTextOption();
    const bool anywhere = hasLongWord(text);
    option.setWrapMode(anywhere ? QTextOption::WrapAnywhere : QTextOption::WrapAtWordBoundaryOrAnywhere);
    if (option.wrapMode() != document()->defaultTextOption().wrapMode())
        document()->setDefaultTextOption(option);
}

bool TextItem::isDatasourceConnected() const
{
    return getItemDatasourceID() != -1;
}

bool TextItem::isMarked(const QString &data)
{
    return data.startsWith(ItemTexts::functionMarker);
}

void TextItem::showEmptyTextMarker(bool show)
{
    m_showEmptyTextMarker = show;
}

void TextItem::connectDocument()
{
    // With spaces, Qt would take the signatures apart for each item.
    // clang-format off
    connect(document(), SIGNAL(contentsChange(int,int,int)), this, SLOT(updateItemOnContentsChange(int,int,int)));
    // clang-format on
    connect(document(), SIGNAL(contentsChanged()), this, SLOT(updateItemOnContentsChanged()));
}

void TextItem::updateItemOnContentsChange(int position, int charsRemoved, int charsAdded)
{
    // While Qt clears a document it has taken the cursors out, and tells again when they are back.
    const bool isBeingCleared = charsRemoved == 0 && charsAdded > 0 && document()->isEmpty();
    if (m_quiet == 0 && !isBeingCleared)
        updateTextOnPropertyChanges(position, charsRemoved, charsAdded);
}

void TextItem::updateItemOnContentsChanged()
{
    if (m_quiet > 0)
        return;
    Q_EMIT textItemHasChanged();
    Q_EMIT itemDataChanged(getItemData(), getItemDatasourceID(), getItemDatasourceField());
}

void TextItem::updateScene(const QRectF &area)
{
    if (scene())
        scene()->update(area);
}

void TextItem::fitItemToContents()
{
    setTextWidth(-1);
    storeItemSize(QGraphicsTextItem::boundingRect().size());
    setTextWidth(getItemWidth());
}

// --- editing

bool TextItem::isInEditing() const
{
    return (textInteractionFlags() & Qt::TextEditorInteraction) != 0;
}

void TextItem::enterEditing()
{
    if (textInteractionFlags() == Qt::TextEditorInteraction)
        return;
    prepareGeometryChange(); // for the pad
    m_idleFlags = flags();
    setTextInteractionFlags(Qt::TextEditorInteraction);
}

void TextItem::announceEditing()
{
    setFocus(Qt::OtherFocusReason);
    Q_EMIT textItemIsEditing(this);
}

QTextCursor TextItem::cursorAt(int position) const
{
    QTextCursor cursor = textCursor();
    cursor.setPosition(std::clamp(position, 0, document()->characterCount() - 1));
    return cursor;
}

void TextItem::startEdit(int position)
{
    enterEditing();
    setTextCursor(cursorAt(position));
    announceEditing();
}

void TextItem::selectOnStart()
{
    enterEditing();
    QTextCursor cursor = textCursor();
    cursor.select(QTextCursor::Document);
    setTextCursor(cursor);
    announceEditing();
}

void TextItem::startSelectedEdit(int from, int to)
{
    enterEditing();
    QTextCursor cursor = cursorAt(from);
    cursor.setPosition(cursorAt(to).position(), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
    announceEditing();
}

void TextItem::setCursorPosition(int position, bool select)
{
    enterEditing();
    QTextCursor cursor = textCursor();
    cursor.setPosition(
        cursorAt(position).position(), select ? QTextCursor::KeepAnchor : QTextCursor::MoveAnchor);
    setTextCursor(cursor);
    announceEditing();
}

void TextItem::endEdit()
{
    prepareGeometryChange();
    // The interaction takes away the focus flag, without which the item could not be edited again.
    const GraphicsItemFlags idleFlags = isInEditing() ? m_idleFlags : flags();
    setTextInteractionFlags(Qt::NoTextInteraction);
    setFlags(idleFlags);
    QTextCursor cursor = textCursor();
    cursor.clearSelection();
    setTextCursor(cursor);
}

void TextItem::mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event)
{
    if (itemIsNonModifiable()) {
        event->accept();
        return;
    }
    if (isInEditing()) {
        QGraphicsTextItem::mouseDoubleClickEvent(event);
        return;
    }
    enterEditing();
    setFocus(Qt::OtherFocusReason);
    setTextCursor(cursorAt(document()->documentLayout()->hitTest(event->pos(), Qt::FuzzyHit)));
    setSelected(true);
    prepareGeometryChange();
    Q_EMIT textItemIsEditing(this);
}

void TextItem::contextMenuEvent(QGraphicsSceneContextMenuEvent *event)
{
    if (isInEditing())
        (new TextMenu(*this, event->widget()))->popup(event->screenPos());
    else
        event->ignore();
}

void TextItem::keyPressEvent(QKeyEvent *event)
{
    if (!isInEditing())
        event->ignore();
    else if (event->matches(QKeySequence::Cancel))
        endEdit();
    else if (event->matches(QKeySequence::Copy))
        textCopy();
    else if (event->matches(QKeySequence::Cut))
        textCut();
    else if (event->matches(QKeySequence::Paste))
        textPaste();
    else
        keyPressEvent1(event);
}

void TextItem::keyPressEvent1(QKeyEvent *event)
{
    QGraphicsTextItem::keyPressEvent(event);
}

void TextItem::textCut()
{
    if (!textCursor().hasSelection())
        return;
    createMimeDataFromSelection();
    textDelete();
}

void TextItem::replaceSelection(const QString &text)
{
    changeText([&] {
        QTextCursor cursor = textCursor();
        cursor.insertText(text);
        setTextCursor(cursor);
    });
}

bool TextItem::canPaste()
{
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    return data && (data->hasText() || data->hasHtml());
}

QString TextItem::clipboardText()
{
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    if (!data)
        return {};
    const QString text = data->text();
    return text.isEmpty() ? HtmlGuard::plainTextOf(data->html()) : text.left(Limits::MaxTextLength);
}

void TextItem::textCopy()
{
    if (textCursor().hasSelection())
        createMimeDataFromSelection();
}

// --- painting

void TextItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget)
{
    const QSizeF mirrored = mirrorShiftingSize();
    const MirrorScope scope(*this, *painter, mirrored.width(), mirrored.height());
    if (itemBrush().style() != Qt::NoBrush) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(itemBrush());
        painter->drawRect(getReferenceRectangle());
    }
    paintDocument(painter, *option, widget);
    painter->setBrush(Qt::NoBrush);
    drawFrame(painter);
    paintEmptyTextMarker(painter, option);
    paintFrames(painter, option);
}

void TextItem::paintDocument(QPainter *painter, const QStyleOptionGraphicsItem &option, QWidget *widget)
{
    if (!showsText(painter->deviceTransform()))
        return;
    const bool selected = textCursor().hasSelection();
    if (isInEditing() && selected) {
        paintSelectedText(*painter, option.exposedRect);
    } else if (!isInEditing() && !selected) {
        paintIdleText(*painter, option.exposedRect);
    } else {
        // No state: Qt's own frames are never drawn.
        QStyleOptionGraphicsItem plain;
        plain.state = QStyle::State_None;
        plain.exposedRect = option.exposedRect;
        QGraphicsTextItem::paint(painter, &plain, widget);
    }
}

void TextItem::paintIdleText(QPainter &painter, const QRectF &exposed)
{
    painter.save();
    if (exposed.isValid())
        painter.setClipRect(exposed, Qt::IntersectClip);
    QAbstractTextDocumentLayout::PaintContext context;
    context.clip = exposed;
    drawText(painter, context);
    painter.restore();
}

void TextItem::paintSelectedText(QPainter &painter, const QRectF &exposed)
{
    QAbstractTextDocumentLayout::Selection selection;
    selection.cursor = textCursor();
    selection.format.setBackground(ORANGE_COLOR);
    selection.format.setForeground(contrastTo(m_textColor));
    QAbstractTextDocumentLayout::PaintContext context;
    context.cursorPosition = selection.cursor.position();
    context.clip = exposed;
    context.selections.append(selection);
    drawText(painter, context);
}

void TextItem::drawText(QPainter &painter, QAbstractTextDocumentLayout::PaintContext &context)
{
    if (m_palette.color(QPalette::Text) != defaultTextColor())
        m_palette.setColor(QPalette::Text, defaultTextColor());
    context.palette = m_palette;
    DocumentDrawing::draw(painter, *document(), context);
}

void TextItem::paintEmptyTextMarker(QPainter *painter, const QStyleOptionGraphicsItem *option)
{
    const bool selected = option->state & QStyle::State_Selected;
    if (!m_showEmptyTextMarker || selected || !WhiteSpace::isWhiteSpace(toPlainText()))
        return;
    painter->setPen(framePen(option, Qt::DashDotDotLine));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(boundingRect());
}

void TextItem::paintFrames(QPainter *painter, const QStyleOptionGraphicsItem *option)
{
    if (isInEditing())
        drawSelectionRectangleEdit(painter, option);
    else
        paintSelectionFrame(painter, option, boundingRect());
}

void TextItem::drawSelectionRectangleEdit(QPainter *painter, const QStyleOptionGraphicsItem *option)
{
    painter->setPen(framePen(option, Qt::DotLine));
    painter->setBrush(editWash);
    painter->drawRect(getReferenceRectangleEdit());
}

// --- printing

QSize TextItem::getItemAbsSize(double &padX, double &padY)
{
    const double s = getScaling();
    const QSizeF size = getReferenceRectangle().size() * s;
    padX = m_framePads.width() * s;
    padY = m_framePads.height() * s;
    const QPointF shift
        = mapToScene(QPointF(-Limits::toInt(padX), -Limits::toInt(padY))) - mapToScene(QPointF());
    m_adjustAmount = QSizeF(shift.x(), shift.y());
    return QSize(Limits::toInt(2.0 * padX + size.width()), Limits::toInt(2.0 * padY + size.height()));
}

QImage TextItem::backgroundWithText(double scaling)
{
    const QSizeF size = getReferenceRectangle().size() * scaling;
    QImage background = SafeImage::create(size.width(), size.height(), QImage::Format_ARGB32_Premultiplied);
    if (background.isNull())
        return background;
    background.fill(ItemColors::whiteRgb);
    QPainter fill(&background);
    fill.setPen(Qt::NoPen);
    fill.setBrush(itemBrush());
    fill.drawRect(background.rect());
    fill.end();

    // Text lies on the dots of the background, and is never dithered itself. Qt cannot be trusted to draw it
    // on a picture of one bit: its threads write neighbouring dots of one byte at the same time.
    background = background.convertToFormat(QImage::Format_Mono, getPrintDitherMethod())
                     .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&background);
    painter.scale(scaling, scaling);
    QAbstractTextDocumentLayout::PaintContext bare;
    drawText(painter, bare);
    painter.end();
    return background.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither);
}

void TextItem::preparePrintImage()
{
    updateItemBrush();
    const double s = getScaling();
    const QSizeF pads = m_framePads;
    const QSizeF whole = (getReferenceRectangle().size() + 2.0 * pads) * s;
    const QImage picture = backgroundWithText(s);
    QImage frame = SafeImage::create(whole.width(), whole.height(), QImage::Format_ARGB32_Premultiplied);
    if (picture.isNull() || frame.isNull()) {
        setPreprintedImage({});
        return;
    }
    frame.fill(ItemColors::transparentRgb);
    {
        // The area is the rectangle of the size with an outline of one pixel, which covers all of the image.
        QPainter painter(&frame);
        painter.save();
        painter.scale(s, s);
        painter.translate(pads.width(), pads.height());
        const QStyleOptionGraphicsItem option;
        paint(&painter, &option, nullptr);
        painter.restore();
        painter.translate(pads.width() * s, pads.height() * s);
        painter.drawImage(0, 0, picture);
    }
    setPreprintedImage(frame);
    // The padded raster covers the same area of the scene as the item did; it is shown with the item's
    // transform, whose translation is no part of the shift.
    moveItem(pos() + mapToParent(QPointF(-pads.width(), -pads.height())) - mapToParent(QPointF()));
}

bool TextItem::havePenColor(const QColor &color) const
{
    return penIsVisible() && getItemPenColor() == color;
}

bool TextItem::haveFillColor(const QColor &color) const
{
    return getItemFillColor() == color && getItemBrushStyle() != MobraTypes::BrushNone;
}

bool TextItem::haveTextColor(const QColor &color) const
{
    return m_textColor == color && !getDocumentIsEmpty();
}

bool TextItem::resetItemColors(const QColor &printColor, bool keepBlack, bool keepOthers)
{
    m_adjustAmount = QSizeF(0.0, 0.0);
    const bool inkOnBlack = haveFillColor(ItemColors::black);
    const bool blackOnInk = haveFillColor(printColor);
    const bool penContrast = keepOthers || (havePenColor(printColor) && inkOnBlack)
        || (havePenColor(ItemColors::black) && blackOnInk);
    const bool textContrast = keepOthers || (haveTextColor(printColor) && inkOnBlack)
        || (haveTextColor(ItemColors::black) && blackOnInk);

    const bool keptBlack = textContrast && keepBlack && m_textColor == ItemColors::black;
    bool changed = m_textColor == printColor || keptBlack;
    setItemTextColor(changed ? ItemColors::black : ItemColors::white);
    if (resetItemPenColors(printColor, penContrast && keepBlack))
        changed = true;
    resetItemFillColors(printColor, changed, (penContrast || textContrast) && keepBlack);
    return notePrinted(changed);
}

bool TextItem::resetItemColorsNegative(const QColor &printColor)
{
    m_adjustAmount = QSizeF(0.0, 0.0);
    const QColor text = m_textColor;
    const QColor ink = printColor == ItemColors::transparent ? ItemColors::white : printColor;
    const bool nearWhite = printColor == ItemColors::transparent && text == ItemColors::nearWhite;
    const bool prints = !nearWhite && text != ink;
    setItemTextColor(prints ? ItemColors::black : ItemColors::white);
    const bool rest = FillableItem::resetItemColorsNegative(printColor);
    return notePrinted(prints || rest);
}
