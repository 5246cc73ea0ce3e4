// SPDX-License-Identifier: BSD-3-Clause
#include "items/barcode/barcodeitem.h"

#include "items/core/itemcolors.h"
#include "items/core/itemtexts.h"
#include "items/core/mirrorscope.h"
#include "platform/zint/barcodeencoder.h"

#include <QPainterPath>

using Zint::QZint;

const QString BarcodeItem::defaultFontFamily = ItemTexts::defaultFontFamily;

namespace {

// The numbers by which the encoder knows symbols.
constexpr int code39 = 8;
constexpr int pdf417 = 55;
constexpr int qrCode = 58;
constexpr int dataMatrix = 71;

// The errors of the encoder that are the text's.
constexpr int textTooLong = 5;
constexpr int wrongCheckDigit = 7;

constexpr int unicodeInput = 1;
constexpr int newHeight = 50;
constexpr int newFontSize = 7;

bool isSeen(const QColor &color)
{
    return color != ItemColors::transparent && color != ItemColors::nearWhite;
}

} // namespace

BarcodeItem::BarcodeItem()
    : m_encoder(std::make_unique<QZint>())
{
    setItemShape(MobraTypes::BarcodeShape);
    setFlags(ItemIsMovable | ItemIsSelectable | ItemIsFocusable | ItemClipsToShape | ItemStacksBehindParent);
    makeBarcode();
    update();
}

BarcodeItem::~BarcodeItem() = default;

void BarcodeItem::makeBarcode()
{
    m_encoder->setText(QStringLiteral("B123456"));
    m_encoder->setSecurityLevel(0);
    m_encoder->setWidth(0);
    m_encoder->setInputMode(unicodeInput);
    m_encoder->setHideText(false);
    m_encoder->setSymbol(qrCode);
    m_encoder->setBorderType(0);
    m_encoder->setBorderWidth(0);
    m_encoder->setHeight(newHeight);
    m_encoder->setWhitespace(0);
    m_encoder->setPdf417CodeWords(1);
    m_encoder->setFontSize(newFontSize);
    m_encoder->setFontStyle(defaultFontFamily);
    m_encoder->setTextAlign(Qt::AlignHCenter | Qt::AlignVCenter);
    m_encoder->setFgColor(m_textColor);
    m_encoder->setBgColor(m_fillColor);
}

QString BarcodeItem::toDescriptionString() const
{
    return QStringLiteral("barcode %1").arg(itemId());
}

QPainterPath BarcodeItem::shape() const
{
    QPainterPath path;
    path.addRect(boundingRect());
    return path;
}

void BarcodeItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget * /*widget*/)
{
    const QRectF bounds = boundingRect();
    painter->save(); // an encoder of a host may change anything
    {
        const MirrorScope mirrored(*this, *painter, bounds.width(), bounds.height());
        m_encoder->render(*painter, bounds, static_cast<QZint::AspectRatioMode>(m_aspectRatioMode));
    }
    painter->restore();
    paintSelectionFrame(painter, option, bounds);
}

short BarcodeItem::getBarcodeSymbol() const
{
    return static_cast<short>(m_encoder->symbol());
}

QString BarcodeItem::getBarcodeText() const
{
    return m_encoder->text();
}

int BarcodeItem::getBarcodeOption2() const
{
    return m_encoder->lineWidth();
}

int BarcodeItem::getBarcodeHeight() const
{
    return m_encoder->lineHeight();
}

int BarcodeItem::getBarcodeWhiteSpace() const
{
    return m_encoder->whitespace();
}

bool BarcodeItem::getBarcodeHideText() const
{
    return m_encoder->hideText();
}

short BarcodeItem::getBarcodeSecurityLevel() const
{
    return static_cast<short>(m_encoder->securityLevel());
}

bool BarcodeItem::getBarcodeTextAbove() const
{
    return m_encoder->textAbove();
}

bool BarcodeItem::getBarcodeShowStartStop() const
{
    return m_encoder->showStartStop();
}

QString BarcodeItem::getBarcodeEncodedText() const
{
    return m_encoder->encodedText();
}

bool BarcodeItem::isValidInput() const
{
    const int error = m_encoder->error_int();
    return error < textTooLong || error > wrongCheckDigit;
}

bool BarcodeItem::isBarcode1D() const
{
    const int symbol = m_encoder->symbol();
    return symbol != qrCode && symbol != pdf417 && symbol != dataMatrix;
}

int BarcodeItem::getItemFontSize() const
{
    return m_encoder->fontSize();
}

QString BarcodeItem::getItemFontFamily() const
{
    return m_encoder->fontStyle();
}

bool BarcodeItem::getItemBold() const
{
    return m_encoder->fontBold();
}

bool BarcodeItem::getItemItalic() const
{
    return m_encoder->fontItalic();
}

bool BarcodeItem::getItemUnderline() const
{
    return m_encoder->fontUnderline();
}

Qt::Alignment BarcodeItem::getItemAlignment() const
{
    return Qt::Alignment::fromInt(m_encoder->textAlign());
}

template <typename Getter, typename Setter, typename Value>
void BarcodeItem::change(Getter getter, Setter setter, const Value &value)
{
    if ((m_encoder.get()->*getter)() == value)
        return;
    (m_encoder.get()->*setter)(value);
    update();
}

void BarcodeItem::setBarcodeSymbol(short symbolCode)
{
    change(&QZint::symbol, &QZint::setSymbol, symbolCode);
}

void BarcodeItem::setBarcodeOption2(int option)
{
    const int symbol = m_encoder->symbol();
    if (symbol == pdf417 || symbol == code39)
        change(&QZint::lineWidth, &QZint::setWidth, option);
}

void BarcodeItem::setBarcodeHeight(int height)
{
    change(&QZint::lineHeight, &QZint::setHeight, height);
}

void BarcodeItem::setBarcodeText(const QString &text)
{
    // A loaded text may hold the marker, and setting it once more is no change.
    if (text != m_encoder->text())
        change(&QZint::text, &QZint::setText, ItemTexts::withoutMarker(text));
}

void BarcodeItem::setBarcodeWhiteSpace(int whitespace)
{
    change(&QZint::whitespace, &QZint::setWhitespace, whitespace);
}

void BarcodeItem::setBarcodeHideText(bool hidetext)
{
    change(&QZint::hideText, &QZint::setHideText, hidetext);
}

void BarcodeItem::setBarcodeSecurityLevel(short level)
{
    change(&QZint::securityLevel, &QZint::setSecurityLevel, level);
}

void BarcodeItem::setBarcodeTextAbove(bool above)
{
    change(&QZint::textAbove, &QZint::setTextAbove, above);
}

void BarcodeItem::setBarcodeShowStartStop(bool show)
{
    change(&QZint::showStartStop, &QZint::setShowStartStop, show);
}

void BarcodeItem::setBarcodeAspectRatio(int ratio)
{
    if (ratio == m_aspectRatioMode)
        return;
    m_aspectRatioMode = ratio;
    update();
}

void BarcodeItem::setItemFontSize(int fontSize)
{
    change(&QZint::fontSize, &QZint::setFontSize, fontSize);
}

void BarcodeItem::setItemFontFamily(const QString &fontFamily)
{
    change(&QZint::fontStyle, &QZint::setFontStyle, fontFamily);
}

void BarcodeItem::setItemAlignment(Qt::Alignment alignment)
{
    change(&QZint::textAlign, &QZint::setTextAlign, static_cast<int>(alignment.toInt()));
}

void BarcodeItem::setItemAlignmentInt(uint align)
{
    setItemAlignment(Qt::Alignment::fromInt(static_cast<int>(align)));
}

void BarcodeItem::setItemBold(bool bold)
{
    change(&QZint::fontBold, &QZint::setFontBold, bold);
}

void BarcodeItem::setItemItalic(bool italic)
{
    change(&QZint::fontItalic, &QZint::setFontItalic, italic);
}

void BarcodeItem::setItemUnderline(bool underline)
{
    change(&QZint::fontUnderline, &QZint::setFontUnderline, underline);
}

void BarcodeItem::setItemFillColor(const QColor &color)
{
    m_fillColor = color;
    change(&QZint::bgColor, &QZint::setBgColor, color);
}

void BarcodeItem::setItemTextColor(const QColor &color)
{
    m_textColor = color;
    change(&QZint::fgColor, &QZint::setFgColor, color);
}

void BarcodeItem::setItemData(const QVariant &data)
{
    setBarcodeText(ItemTexts::withoutMarker(data.toString()));
}

void BarcodeItem::importBarcodeProperties(int symbol, const QString &text, bool textAbove, int alignment,
    int fontSize, bool hideText, bool bold, int option2, int whiteSpace, int securityLevel)
{
    m_encoder->setSymbol(symbol);
    m_encoder->setText(text);
    m_encoder->setTextAbove(textAbove);
    m_encoder->setTextAlign(alignment);
    m_encoder->setFontSize(fontSize);
    m_encoder->setHideText(hideText);
    m_encoder->setFontBold(bold);
    m_encoder->setWidth(option2);
    m_encoder->setWhitespace(whiteSpace);
    m_encoder->setSecurityLevel(securityLevel);
    update();
}

bool BarcodeItem::resetItemColors(const QColor &printColor, bool keepBlack, bool /*keepOthers*/)
{
    const QColor fill = getItemFillColor();
    const QColor text = getItemTextColor();
    const bool fillPrints = fill == printColor;
    const bool textPrints = text == printColor;

    if (fillPrints)
        setItemFillColor(ItemColors::black);
    else if (isSeen(fill))
        setItemFillColor(ItemColors::white);
    setItemTextColor(textPrints ? ItemColors::black : ItemColors::white);

    // Without bars in the ink, black stays only around a fill in the ink: keepOthers cannot extend that.
    if (keepBlack && (textPrints || fillPrints)) {
        if (fill == ItemColors::black)
            setItemFillColor(ItemColors::black);
        if (text == ItemColors::black)
            setItemTextColor(ItemColors::black);
    }
    const bool prints = fillPrints || textPrints;
    setItemFlags(MobraTypes::FlagVisibleInPrint, prints);
    return prints;
}

bool BarcodeItem::resetItemColorsNegative(const QColor &printColor)
{
    const bool hasFill = getItemFillColor() != ItemColors::transparent;
    const bool fillPrints = hasFill && getItemFillColor() != printColor;
    const bool textPrints = getItemTextColor() != printColor;
    if (hasFill)
        setItemFillColor(fillPrints ? ItemColors::black : ItemColors::white);
    setItemTextColor(textPrints ? ItemColors::black : ItemColors::white);
    const bool prints = textPrints || fillPrints;
    setItemFlags(MobraTypes::FlagVisibleInPrint, prints);
    return prints;
}
