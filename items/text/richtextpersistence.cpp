// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/limits.h"
#include "items/core/record.h"
#include "items/text/htmlguard.h"
#include "items/text/layoutpause.h"
#include "items/text/richtextitem.h"

#include <QRegularExpression>
#include <QTextCursor>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

/// Versions from this one on tell whether the document is empty, and the screen factor.
constexpr unsigned int factorSinceVersion = 2;

/// The weight of a record, in the scale of older writers: up to 50 light, up to 75 bold, beyond the default.
void applyOldWeight(QFont &font, int stored)
{
    if (stored < 51)
        font.setWeight(QFont::Normal);
    else if (stored < 76)
        font.setWeight(QFont::Bold);
}

/// Where an attribute with a point size begins and ends in HTML that Qt has written.
const QString styleAttribute = u"tyle=\"(.*);\">"_s;

/// Finds the same as the pattern "begin(.*)end" does with inverted greediness. Where a line holds no more
/// ends, the expression goes on behind the line: from every further beginning it would search the line anew.
QRegularExpression searchingLinesOnce(const QString &begin, const QString &end)
{
    return QRegularExpression(
        begin + u"(?:(.*)"_s + end + u"|.*?(*SKIP)(*FAIL))"_s, QRegularExpression::InvertedGreedinessOption);
}

bool canBeRewritten(const QString &html)
{
    const qsizetype sizes = html.count("font-size:"_L1);
    return sizes <= Limits::MaxHtmlRewrites && sizes * html.size() <= Limits::MaxHtmlRewriteWork;
}

} // namespace

void RichTextItem::scaleHtmlFont(QString &html, const QRegularExpression &re, double factor)
{
    // Of the first call, whatever later ones pass.
    static QRegularExpression outer
        = re.pattern() == styleAttribute ? searchingLinesOnce(u"tyle=\""_s, u";\">"_s) : re;
    outer.setPatternOptions(QRegularExpression::InvertedGreedinessOption);
    static const QRegularExpression inner = searchingLinesOnce(u"font-size:"_s, u"pt;"_s);
    QList<std::pair<QString, QString>> replacements;
    for (const QRegularExpressionMatch &style : outer.globalMatch(html)) {
        const QString whole = style.captured();
        const QRegularExpressionMatch match = inner.match(whole);
        bool ok = false;
        const double points = match.captured(1).toDouble(&ok);
        if (!match.hasMatch() || !ok)
            continue;
        const QString size = match.captured();
        const QString scaled
            = QString(size).replace(match.captured(1), QString::number(points * factor, 'f', 2));
        replacements.append({ whole, QString(whole).replace(size, scaled) });
    }
    for (const auto &[whole, scaled] : replacements)
        html.replace(whole, scaled);
}

void RichTextItem::setScaledHtml(QString html, double storedFactor)
{
    const bool scalable = HtmlGuard::accepts(html) && canBeRewritten(html) && std::isfinite(storedFactor)
        && storedFactor > Limits::MinDivisor;
    if (scalable)
        scaleHtmlFont(html, QRegularExpression(styleAttribute), storedFactor / s_lastScreenFactor);
    setItemHtml(html);
}

Item *RichTextItem::createItemCopy()
{
    auto copy = std::make_unique<RichTextItem>();
    const QuietDocument quiet(*copy);
    copyItemProperties(copy.get(), true);
    copy->m_emptyCharFormat = m_emptyCharFormat;
    copy->m_emptyBlockFormat = m_emptyBlockFormat;
    copy->m_documentIsEmpty = m_documentIsEmpty;
    copy->m_screenFactor = m_screenFactor;
    copy->setItemTextColorOnLoad(getItemTextColor());
    copy->setFramePads(getFramePads());
    {
        const LayoutPause pause(*copy->document());
        if (!m_documentIsEmpty)
            copy->setItemHtml(toHtml());
        copy->setFont(font());
        if (m_documentIsEmpty)
            copy->useEmptyFormats();
        copy->setTextWidth(textWidth());
        copy->copyCursorProperties(*this);
    }
    copy->updateTextHeight();
    return copy.release();
}

void RichTextItem::saveItemToData(QDataStream &stream)
{
    stream << toHtml();
    Record::write(stream, m_documentIsEmpty);
    if (!m_documentIsEmpty)
        Record::write(stream, m_screenFactor);
    Record::write(stream, getItemTextColor());
    TextItem::saveItemToData(stream);
    stream << getEmptyFontFamily();
    const int alignment = getEmptyAlignment();
    Record::write(stream, qint16(getEmptyFontSize()), qint16(getEmptyFontWeight()), getEmptyFontItalic(),
        getEmptyFontUnderline(), qint16(alignment == 0 ? int(Qt::AlignLeft) : alignment));
}

void RichTextItem::loadItemFromData(QDataStream &stream, unsigned int version)
{
    const QuietDocument quiet(*this);
    {
        const LayoutPause pause(*document());
        QTextCursor cursor = textCursor();
        cursor.beginEditBlock();
        document()->clear();
        loadHtml(stream, version);
        QColor color;
        Record::read(stream, std::tie(color));
        setItemTextColorOnLoad(color);
        TextItem::loadItemFromData(stream, version);
        loadEmptyFormats(stream);
        cursor.endEditBlock();
        setTextCursor(cursor);
        if (m_documentIsEmpty)
            useEmptyFormats();
    }
    updateTextHeight();
}

void RichTextItem::loadHtml(QDataStream &stream, unsigned int version)
{
    QString html;
    stream >> html;
    if (version < factorSinceVersion) {
        setItemHtml(html);
        m_documentIsEmpty = toPlainText().isEmpty();
        return;
    }
    Record::read(stream, std::tie(m_documentIsEmpty));
    if (m_documentIsEmpty) {
        setItemHtml(html);
        noteLoadedAsEmpty();
        return;
    }
    double factor;
    Record::read(stream, std::tie(factor));
    setScaledHtml(html, factor);
}

void RichTextItem::noteLoadedAsEmpty()
{
    // A text wins; but of an empty paragraph whose style Qt cannot read, such as one with an odd name of a
    // font, it makes a line break.
    m_documentIsEmpty = toPlainText().trimmed().isEmpty();
    if (m_documentIsEmpty)
        document()->clear();
}

void RichTextItem::loadEmptyFormats(QDataStream &stream)
{
    QString family;
    stream >> family;
    qint16 size;
    qint16 weight;
    bool italic;
    bool underline;
    qint16 alignment;
    Record::read(stream, std::tie(size, weight, italic, underline, alignment));
    QFont font;
    font.setFamily(family);
    if (size > 0)
        font.setPointSizeF(size / m_screenFactor);
    applyOldWeight(font, weight);
    font.setItalic(italic);
    font.setUnderline(underline);
    m_emptyCharFormat.setFont(font, QTextCharFormat::FontPropertiesAll);
    m_emptyCharFormat.setForeground(getItemTextColor());
    m_emptyBlockFormat.setAlignment(Qt::Alignment::fromInt(alignment));
}

void RichTextItem::loadItemFromJSON(const QVariantMap &map, unsigned int version)
{
    const QuietDocument quiet(*this);
    TextItem::loadItemFromJSON(map, version);
    const QString html = map.value(u"itemHtml"_s).toString();
    const double factor = map.value(u"screenDpi"_s).toDouble();
    if (map.value(u"documentIsEmpty"_s).toBool()) {
        noteLoadedAsEmpty();
    } else {
        // Again: the text colour came behind it, and has taken the place of all colours.
        if (map.contains(u"itemHtml"_s))
            setScaledHtml(html, factor > 0.0 ? factor : s_lastScreenFactor);
        m_documentIsEmpty = document()->isEmpty();
    }
    if (m_documentIsEmpty)
        useEmptyFormats();
    layOut();
    updateItemPositionAfterLoading();
}
