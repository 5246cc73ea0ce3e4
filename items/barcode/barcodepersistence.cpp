// SPDX-License-Identifier: BSD-3-Clause
#include "items/barcode/barcodeitem.h"
#include "items/core/record.h"
#include "platform/zint/barcodeencoder.h"

#include <type_traits>

namespace {

/// Copies a value, which shares what it has encoded. A host's encoder may be an object that cannot be copied.
template <typename Encoder> void copyEncoder(const Encoder &from, Encoder &to)
{
    if constexpr (std::is_copy_assignable_v<Encoder>) {
        to = from;
    } else {
        to.setText(from.text());
        to.setSecurityLevel(from.securityLevel());
        to.setWidth(from.lineWidth());
        to.setInputMode(from.inputMode());
        to.setHideText(from.hideText());
        to.setSymbol(from.symbol());
        to.setBorderType(from.borderType());
        to.setBorderWidth(from.borderWidth());
        to.setHeight(from.lineHeight());
        to.setWhitespace(from.whitespace());
        to.setPdf417CodeWords(from.pdf417CodeWords());
        to.setTextAbove(from.textAbove());
        to.setShowStartStop(from.showStartStop());
        to.setFontSize(from.fontSize());
        to.setFontStyle(from.fontStyle());
        to.setFontBold(from.fontBold());
        to.setFontItalic(from.fontItalic());
        to.setFontUnderline(from.fontUnderline());
        to.setTextAlign(from.textAlign());
        to.setFgColor(from.fgColor());
        to.setBgColor(from.bgColor());
    }
}

} // namespace

Item *BarcodeItem::createItemCopy()
{
    auto copy = copyAs<BarcodeItem>();
    copyEncoder(*m_encoder, *copy->m_encoder);
    copy->m_fillColor = m_fillColor;
    copy->m_textColor = m_textColor;
    copy->m_aspectRatioMode = m_aspectRatioMode;
    return copy.release();
}

void BarcodeItem::saveItemToData(QDataStream &stream)
{
    Record::write(stream, qint16(m_encoder->symbol()));
    stream << m_encoder->text();
    Record::write(stream, qint16(m_encoder->lineWidth()), qint16(m_encoder->whitespace()),
        m_encoder->hideText(), qint16(m_encoder->securityLevel()), qint16(m_encoder->fontSize()));
    stream << m_encoder->fontStyle();
    Record::write(stream, qint16(m_encoder->textAlign()), m_encoder->textAbove(), m_encoder->fontBold(),
        m_encoder->fontItalic(), m_encoder->fontUnderline(), m_encoder->showStartStop());
    Item::saveItemToData(stream);
    Record::write(stream, m_fillColor, m_textColor);
}

void BarcodeItem::loadItemFromData(QDataStream &stream, unsigned int version)
{
    qint16 symbol;
    Record::read(stream, std::tie(symbol));
    m_encoder->setSymbol(symbol);
    QString text;
    stream >> text;
    m_encoder->setText(text);
    loadLayout(stream);
    QString family;
    stream >> family;
    m_encoder->setFontStyle(family);
    loadLine(stream);
    Item::loadItemFromData(stream, version);

    QColor fillColor;
    QColor textColor;
    Record::read(stream, std::tie(fillColor, textColor));
    setItemFillColor(fillColor);
    setItemTextColor(textColor);
    update();
}

void BarcodeItem::loadLayout(QDataStream &stream)
{
    qint16 option2;
    qint16 whiteSpace;
    bool hideText;
    qint16 securityLevel;
    qint16 fontSize;
    Record::read(stream, std::tie(option2, whiteSpace, hideText, securityLevel, fontSize));
    m_encoder->setWidth(option2);
    m_encoder->setWhitespace(whiteSpace);
    m_encoder->setHideText(hideText);
    m_encoder->setSecurityLevel(securityLevel);
    m_encoder->setFontSize(fontSize);
}

void BarcodeItem::loadLine(QDataStream &stream)
{
    qint16 alignment;
    bool textAbove;
    bool bold;
    bool italic;
    bool underline;
    bool showStartStop;
    Record::read(stream, std::tie(alignment, textAbove, bold, italic, underline, showStartStop));
    m_encoder->setTextAlign(alignment);
    m_encoder->setTextAbove(textAbove);
    m_encoder->setFontBold(bold);
    m_encoder->setFontItalic(italic);
    m_encoder->setFontUnderline(underline);
    m_encoder->setShowStartStop(showStartStop);
}

void BarcodeItem::loadItemFromJSON(const QVariantMap &map, unsigned int version)
{
    Item::loadItemFromJSON(map, version);
    update();
}
