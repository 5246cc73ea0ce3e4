// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/richtextitem.h"

#include "items/core/itemtexts.h"
#include "items/core/limits.h"
#include "items/text/htmlguard.h"
#include "items/text/layoutpause.h"

#include <QApplication>
#include <QClipboard>
#include <QFontInfo>
#include <QKeyEvent>
#include <QMimeData>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocumentFragment>

#include <algorithm>
#include <cmath>
#include <functional>

using namespace Qt::StringLiterals;

double RichTextItem::s_textFitsTolerance = 0.0;
double RichTextItem::s_lastScreenFactor = 1.0;

namespace {

constexpr double defaultPixelSize = 48.0;
constexpr double leastSide = 1.0;
constexpr double documentMargin = 4.0;

double usableFactor(double factor)
{
    return std::isfinite(factor) && factor > Limits::MinDivisor ? factor : 1.0;
}

QTextCharFormat charFormatOf(const QFont &font)
{
    QTextCharFormat format;
    format.setFont(font, QTextCharFormat::FontPropertiesAll);
    return format;
}

/// HTML knows the right side only as such; to Qt it is the left side of texts that run from right to left.
Qt::Alignment asInHtml(Qt::Alignment alignment)
{
    return alignment & Qt::AlignRight ? alignment | Qt::AlignAbsolute : alignment & ~Qt::AlignAbsolute;
}

} // namespace

RichTextItem::RichTextItem()
{
    setItemShape(MobraTypes::RichTextShape);
    setScreenDPI();
    QFont font;
    font.setFamily(defaultFontFamily);
    font.setWeight(QFont::Bold);
    font.setPointSizeF(defaultPixelSize / m_screenFactor);
    m_emptyCharFormat = charFormatOf(font);
    m_emptyCharFormat.setForeground(getItemTextColor());
    m_emptyCharFormat.setBackground(Qt::NoBrush);
    m_emptyBlockFormat.setAlignment(Qt::AlignLeft);
    m_emptyBlockFormat.setTopMargin(0.0);
    m_emptyBlockFormat.setBottomMargin(0.0);
    m_emptyBlockFormat.setLeftMargin(0.0);
    m_emptyBlockFormat.setRightMargin(0.0);
    setDefaultTextColor(getItemTextColor());
    {
        const LayoutPause pause(*document());
        setFont(font);
        resetDocumentMargins();
        useEmptyFormats();
        setTextWidth(getItemWidth());
    }
    updateTextHeight();
    // Qt lays the text out between its two notifications of a change.
    connect(document(), &QTextDocument::contentsChanged, this, &RichTextItem::updateTextHeight);
    connectDocument();
    connect(
        document(), &QTextDocument::cursorPositionChanged, this, &RichTextItem::updateCursorPositionChanged);
}

RichTextItem::~RichTextItem() = default;

QString RichTextItem::toDescriptionString() const
{
    return u"Rich Text %1"_s.arg(itemId());
}

// --- the box

QRectF RichTextItem::getReferenceRectangleEdit() const
{
    QRectF rect = sizeRect();
    rect.setHeight(std::max(rect.height(), m_textHeight));
    return rect;
}

QRectF RichTextItem::boundingRect() const
{
    const double pen = itemPen().widthF();
    const double aside = isInEditing() ? std::max<double>(pen, getTextEditPad()) : pen;
    return getReferenceRectangleEdit().adjusted(-aside, -pen, aside, pen);
}

bool RichTextItem::applySize(const QSizeF &size)
{
    TextItem::applySize(size.expandedTo(QSizeF(leastSide, leastSide)));
    setItemScaleX(1.0);
    setItemScaleY(1.0);
    return true;
}

void RichTextItem::layOut()
{
    {
        const LayoutPause pause(*document());
        setTextWidth(Limits::geometry(getItemWidth()));
    }
    updateTextHeight();
}

void RichTextItem::updateItemPen()
{
    prepareGeometryChange();
    TextItem::updateItemPen();
    const double width = itemPen().widthF();
    setFramePads(QSizeF(width, width));
    updateTextHeight();
}

void RichTextItem::updateTextHeight()
{
    prepareGeometryChange();
    m_textHeight = document()->size().height();
    updateTextFitsInBox();
    updateItemBrush(); // a gradient fills the bounding rectangle, which is as high as the text
}

void RichTextItem::updateTextFitsInBox()
{
    const double room = s_textFitsTolerance + getItemHeight()
        + m_emptyCharFormat.doubleProperty(QTextFormat::FontPointSize);
    m_textFitsInBox = room >= m_textHeight;
}

bool RichTextItem::testSetItemSize(const QSizeF &size)
{
    const QuietDocument quiet(*this);
    const auto lay = [this](double width) {
        const LayoutPause pause(*document());
        setTextWidth(Limits::geometry(width));
    };
    lay(size.width());
    const double height = document()->size().height();
    lay(getItemWidth());
    return size.height() >= height;
}

void RichTextItem::adjustBoxSizeToContent(double minHeight)
{
    setItemSize(QSizeF(getItemWidth(), std::max(minHeight, m_textHeight)));
}

void RichTextItem::resetDocumentMargins()
{
    document()->setDocumentMargin(documentMargin);
}

void RichTextItem::setScreenDPI()
{
    const QFontInfo info(QApplication::font());
    m_screenFactor = usableFactor(double(info.pixelSize()) / Limits::divisor(info.pointSizeF()));
    s_lastScreenFactor = m_screenFactor;
}

// --- the format of the empty box

void RichTextItem::useEmptyFormats()
{
    const QuietDocument quiet(*this);
    const bool hasHistory = document()->isUndoAvailable();
    QTextCursor cursor(document());
    // Undoing what has emptied the box undoes this too.
    cursor.joinPreviousEditBlock();
    QTextBlockFormat block = m_emptyBlockFormat;
    block.setAlignment(asInHtml(block.alignment()));
    cursor.setBlockFormat(block);
    cursor.setBlockCharFormat(m_emptyCharFormat);
    cursor.endEditBlock();
    cursor.setCharFormat(m_emptyCharFormat);
    setTextCursor(cursor);
    if (!hasHistory)
        document()->clearUndoRedoStacks();
}

void RichTextItem::takeEmptyFormats()
{
    const QTextCursor cursor(document());
    m_emptyBlockFormat = cursor.blockFormat();
    m_emptyBlockFormat.setAlignment(m_emptyBlockFormat.alignment() & ~Qt::AlignAbsolute);
    m_emptyCharFormat = cursor.blockCharFormat();
}

void RichTextItem::noteWhetherEmpty()
{
    const bool wasEmpty = m_documentIsEmpty;
    m_documentIsEmpty = document()->isEmpty();
    if (!m_documentIsEmpty)
        return;
    // An empty box that an undo brings back has its formats, and changing it would end the redoing.
    if (document()->isRedoAvailable())
        takeEmptyFormats();
    else if (!wasEmpty)
        useEmptyFormats();
}

void RichTextItem::changeEmptyFont(const std::function<void(QFont &)> &change)
{
    QFont font = m_emptyCharFormat.font();
    change(font);
    m_emptyCharFormat.setFont(font, QTextCharFormat::FontPropertiesAll);
    if (m_documentIsEmpty)
        useEmptyFormats();
}

int RichTextItem::getEmptyFontSize() const
{
    return Limits::toInt(m_emptyCharFormat.font().pointSizeF() * m_screenFactor);
}

void RichTextItem::setEmptyFontSize(int pixels)
{
    if (pixels > 0)
        changeEmptyFont([&](QFont &font) { font.setPointSizeF(pixels / m_screenFactor); });
}

void RichTextItem::setEmptyFontFamily(const QString &family)
{
    changeEmptyFont([&](QFont &font) { font.setFamily(family); });
}

void RichTextItem::setEmptyFontWeight(int weight)
{
    if (weight >= QFont::Thin && weight <= 1000)
        changeEmptyFont([&](QFont &font) { font.setWeight(static_cast<QFont::Weight>(weight)); });
}

void RichTextItem::setEmptyFontItalic(bool italic)
{
    changeEmptyFont([&](QFont &font) { font.setItalic(italic); });
}

void RichTextItem::setEmptyFontUnderline(bool underline)
{
    changeEmptyFont([&](QFont &font) { font.setUnderline(underline); });
}

void RichTextItem::setEmptyAlignment(int alignment)
{
    m_emptyBlockFormat.setAlignment(Qt::Alignment::fromInt(alignment));
    if (m_documentIsEmpty)
        useEmptyFormats();
}

// --- fonts and colours

bool RichTextItem::selectionIsMeant() const
{
    return isInEditing() && textCursor().hasSelection();
}

QTextCursor RichTextItem::meantText() const
{
    QTextCursor cursor = textCursor();
    if (!selectionIsMeant())
        cursor.select(QTextCursor::Document);
    return cursor;
}

void RichTextItem::mergeFormat(const QTextCharFormat &format)
{
    {
        const LayoutPause pause(*document());
        const bool whole = !selectionIsMeant();
        meantText().mergeCharFormat(format);
        if (whole)
            mergeEmptyFormat(format);
    }
    updateTextOnPropertyChanges(-1, -1, -1);
}

void RichTextItem::mergeEmptyFormat(const QTextCharFormat &format)
{
    // A cursor that has not moved since keeps a format of its own.
    QTextCursor cursor = textCursor();
    cursor.mergeCharFormat(format);
    setTextCursor(cursor);
    m_emptyCharFormat.merge(format);
    if (m_documentIsEmpty)
        useEmptyFormats();
}

int RichTextItem::getItemFontSize() const
{
    if (m_documentIsEmpty)
        return getEmptyFontSize();
    const QTextCursor text = meantText();
    double points = -1.0;
    for (QTextBlock block = document()->findBlock(text.selectionStart());
         block.isValid() && block.position() < text.selectionEnd(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            const bool outside = fragment.position() + fragment.length() <= text.selectionStart()
                || fragment.position() >= text.selectionEnd();
            if (outside)
                continue;
            const double size = fragment.charFormat().font().pointSizeF();
            if (points >= 0.0 && !qFuzzyCompare(size, points))
                return -1;
            points = size;
        }
    }
    return points < 0.0 ? getEmptyFontSize() : Limits::toInt(points * m_screenFactor);
}

void RichTextItem::setItemFontSize(int size)
{
    if (size < 1)
        return;
    QTextCharFormat format;
    format.setFontPointSize(size / m_screenFactor);
    mergeFormat(format);
}

QTextCursor RichTextItem::toldText() const
{
    return isInEditing() ? textCursor() : QTextCursor(document());
}

QTextCharFormat RichTextItem::toldFormat() const
{
    return m_documentIsEmpty ? m_emptyCharFormat : toldText().charFormat();
}

QString RichTextItem::getItemFontFamily() const
{
    return toldFormat().font().family();
}

void RichTextItem::setItemFontFamily(const QString &family)
{
    QTextCharFormat format;
    format.setFontFamilies({ family });
    mergeFormat(format);
}

bool RichTextItem::getItemBold() const
{
    return toldFormat().font().bold();
}

void RichTextItem::setItemBold(bool bold)
{
    QTextCharFormat format;
    format.setFontWeight(bold ? QFont::Bold : QFont::Normal);
    mergeFormat(format);
}

bool RichTextItem::getItemItalic() const
{
    return toldFormat().fontItalic();
}

void RichTextItem::setItemItalic(bool italic)
{
    QTextCharFormat format;
    format.setFontItalic(italic);
    mergeFormat(format);
}

bool RichTextItem::getItemUnderline() const
{
    return toldFormat().fontUnderline();
}

void RichTextItem::setItemUnderline(bool underline)
{
    QTextCharFormat format;
    format.setFontUnderline(underline);
    mergeFormat(format);
}

Qt::Alignment RichTextItem::getItemAlignment() const
{
    const QTextBlockFormat format = m_documentIsEmpty ? m_emptyBlockFormat : toldText().blockFormat();
    return format.alignment() & ~Qt::AlignAbsolute;
}

void RichTextItem::setItemAlignment(Qt::Alignment alignment)
{
    if (!selectionIsMeant())
        m_emptyBlockFormat.setAlignment(alignment);
    if (m_documentIsEmpty) {
        useEmptyFormats();
    } else {
        QTextBlockFormat format;
        format.setAlignment(asInHtml(alignment));
        meantText().mergeBlockFormat(format);
    }
    updateTextOnPropertyChanges(-1, -1, -1);
}

void RichTextItem::setItemTextColor(const QColor &color)
{
    if (!selectionIsMeant()) {
        setItemTextColorNoSelection(color);
        return;
    }
    QTextCharFormat format;
    format.setForeground(color);
    textCursor().mergeCharFormat(format);
}

void RichTextItem::setItemTextColorNoSelection(const QColor &color)
{
    setItemTextColorOnLoad(color);
    QTextCharFormat format;
    format.setForeground(color);
    m_emptyCharFormat.merge(format);
    QTextCursor whole(document());
    whole.select(QTextCursor::Document);
    whole.mergeCharFormat(format);
    if (m_documentIsEmpty)
        useEmptyFormats();
}

void RichTextItem::setItemTextColorOnLoad(const QColor &color)
{
    TextItem::setItemTextColor(color);
    setDefaultTextColor(color);
}

void RichTextItem::setItemTextColorString(const QString &newTextColorString)
{
    const QColor color(newTextColorString);
    if (color.isValid())
        setItemTextColor(color);
}

// --- HTML and data

void RichTextItem::setItemData(const QVariant &data)
{
    static QString lastMarked;
    const QRectF before = sceneBoundingRect();
    const QString given = data.toString();
    const bool marked = isMarked(given);
    const QString text = marked ? ItemTexts::withoutMarker(given) : given;
    const bool another = (marked && text != lastMarked) || text != toPlainText();
    if (marked)
        lastMarked = text;
    if (another)
        showData(text, marked);
    updateScene(before);
}

void RichTextItem::showData(const QString &text, bool marked)
{
    {
        const QuietDocument quiet(*this);
        const LayoutPause pause(*document());
        const int alignment = textCursor().blockFormat().intProperty(QTextFormat::BlockAlignment);
        const double points = textCursor().charFormat().doubleProperty(QTextFormat::FontPointSize);
        if (marked)
            setItemHtml(text);
        else
            setItemText(text);
        QTextBlockFormat block;
        block.setProperty(QTextFormat::BlockAlignment, alignment);
        QTextCharFormat character;
        character.setFontPointSize(points);
        QTextCursor cursor(document());
        cursor.beginEditBlock();
        cursor.select(QTextCursor::Document);
        cursor.mergeBlockFormat(block);
        if (marked && points > 0.0)
            cursor.mergeCharFormat(character);
        cursor.clearSelection();
        cursor.endEditBlock();
        setTextCursor(cursor);
        document()->clearUndoRedoStacks();
    }
    updateTextOnPropertyChanges(-1, -1, -1);
}

void RichTextItem::updateTextOnPropertyChanges(int /*position*/, int /*charsRemoved*/, int /*charsAdded*/)
{
    noteWhetherEmpty();
    updateTextHeight();
}

// --- painting and editing

void RichTextItem::drawFrame(QPainter *painter)
{
    if (itemPen().style() == Qt::NoPen)
        return;
    const double width = itemPen().widthF();
    painter->setPen(itemPen());
    painter->drawRect(QRectF(-width / 2.0, -width / 2.0, sizeRect().width() + itemPen().width(),
        sizeRect().height() + itemPen().width()));
}

void RichTextItem::keyPressEvent1(QKeyEvent *event)
{
    if (event->matches(QKeySequence::InsertParagraphSeparator) && isOnBlankLine())
        insertParagraph();
    else
        TextItem::keyPressEvent1(event);
}

bool RichTextItem::isOnBlankLine() const
{
    const QTextCursor cursor = textCursor();
    return cursor.block().length() == 1 && !cursor.currentList();
}

void RichTextItem::insertParagraph()
{
    // Qt would take the formats away from a blank line instead.
    QTextCursor cursor = textCursor();
    cursor.insertBlock();
    setTextCursor(cursor);
}

bool RichTextItem::sceneEvent(QEvent *event)
{
    const auto ends = [this] { return std::pair(textCursor().anchor(), textCursor().position()); };
    const auto before = ends();
    const int revision = document()->revision();
    const bool handled = TextItem::sceneEvent(event);
    // Of the moves that come from changes the document tells.
    if (document()->revision() == revision && ends() != before)
        updateCursorPositionChanged(textCursor());
    return handled;
}

void RichTextItem::keyReleaseEvent(QKeyEvent *event)
{
    QGraphicsTextItem::keyReleaseEvent(event);
}

void RichTextItem::createMimeDataFromSelection()
{
    const QTextDocumentFragment selected = textCursor().selection();
    auto *data = new QMimeData;
    data->setHtml(selected.toHtml());
    data->setText(selected.toPlainText());
    QApplication::clipboard()->setMimeData(data);
}

void RichTextItem::textPaste()
{
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    const QString html = data ? data->html() : QString();
    const QString text = clipboardText();
    if (!html.isEmpty() && HtmlGuard::accepts(html)) {
        changeText([&] {
            QTextCursor cursor = textCursor();
            cursor.insertHtml(html);
            setTextCursor(cursor);
        });
    } else if (!text.isEmpty()) {
        replaceSelection(text);
    }
}

void RichTextItem::copyCursorProperties(const RichTextItem &other)
{
    const QTextCursor from = other.textCursor();
    QTextCursor cursor = cursorAt(from.anchor());
    cursor.setPosition(cursorAt(from.position()).position(), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

void RichTextItem::updateCursorPositionChanged(const QTextCursor & /*cursor*/)
{
    Q_EMIT textItemCursorHasChanged();
}
