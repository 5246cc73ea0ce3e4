// SPDX-License-Identifier: BSD-3-Clause
#include "label/textcolors.h"

#include "items/text/richtextitem.h"

#include <QGuiApplication>
#include <QImage>
#include <QPalette>
#include <QSet>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace {

QColor changed(const QColor &color, const TextColors::Change &change)
{
    return color.isValid() && color.alpha() > 0 ? change(color) : color;
}

QBrush changed(QBrush brush, const TextColors::Change &change)
{
    if (brush.style() == Qt::NoBrush)
        return brush;
    if (!brush.gradient()) {
        brush.setColor(changed(brush.color(), change));
        return brush;
    }
    QGradient gradient = *brush.gradient();
    QGradientStops stops = gradient.stops();
    for (auto &[position, color] : stops)
        color = changed(color, change);
    gradient.setStops(stops);
    return QBrush(gradient);
}

/// Qt's own border of every frame is a relief, which has shades of its colour, and mostly without a width.
void makeBordersPlain(QTextFormat &format)
{
    if (!format.isFrameFormat())
        return;
    if (format.toFrameFormat().border() <= 0.0)
        format.clearProperty(QTextFormat::FrameBorderBrush);
    else if (format.toFrameFormat().borderStyle() >= QTextFrameFormat::BorderStyle_Groove)
        format.setProperty(QTextFormat::FrameBorderStyle, QTextFrameFormat::BorderStyle_Solid);
}

/// Whatever colour a format has lies in a property of one of three types.
QTextFormat changed(QTextFormat format, const TextColors::Change &change)
{
    makeBordersPlain(format);
    const QMap<int, QVariant> properties = format.properties();
    for (auto it = properties.cbegin(); it != properties.cend(); ++it) {
        if (it->typeId() == QMetaType::QColor) {
            format.setProperty(it.key(), changed(it->value<QColor>(), change));
        } else if (it->typeId() == QMetaType::QBrush) {
            format.setProperty(it.key(), changed(it->value<QBrush>(), change));
        } else if (it->typeId() == QMetaType::QPen) {
            auto pen = it->value<QPen>();
            pen.setBrush(changed(pen.brush(), change));
            format.setProperty(it.key(), pen);
        }
    }
    return format;
}

/// A horizontal rule without a colour, which Qt draws in one of its own.
bool isPlainRule(const QTextFormat &format)
{
    return format.hasProperty(QTextFormat::BlockTrailingHorizontalRulerWidth)
        && !format.hasProperty(QTextFormat::BackgroundBrush);
}

QList<QTextFrame *> framesOf(QTextFrame *root)
{
    QList<QTextFrame *> frames { root };
    for (qsizetype i = 0; i < frames.size(); ++i)
        frames += frames[i]->childFrames();
    return frames;
}

QList<QTextTableCell> cellsOf(const QTextTable *table)
{
    QList<QTextTableCell> cells;
    for (int row = 0; table && row < table->rows(); ++row) {
        for (int column = 0; column < table->columns(); ++column)
            cells += table->cellAt(row, column);
    }
    return cells;
}

/// A format that may hold colours, and how to replace it.
struct Site
{
    QTextFormat format;
    std::function<void(const QTextFormat &)> replace;
    bool isRun = false; ///< Of letters in one format, or a picture.
};

QList<Site> runsOf(const QTextBlock &block)
{
    QList<Site> sites;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextFragment run = it.fragment();
        QTextCursor letters(block);
        letters.setPosition(run.position());
        letters.setPosition(run.position() + run.length(), QTextCursor::KeepAnchor);
        const auto replace = [letters](const QTextFormat &other) {
            QTextCursor(letters).setCharFormat(other.toCharFormat());
        };
        sites += Site { run.charFormat(), replace, true };
    }
    return sites;
}

QList<Site> sitesOf(const QTextBlock &block)
{
    const QTextCursor start(block);
    QList<Site> sites { Site { block.blockFormat(),
        [start](const QTextFormat &other) { QTextCursor(start).setBlockFormat(other.toBlockFormat()); } } };
    // The number or bullet of a list.
    if (block.textList())
        sites += Site { block.charFormat(), [start](const QTextFormat &other) {
                           QTextCursor(start).setBlockCharFormat(other.toCharFormat());
                       } };
    return sites + runsOf(block);
}

QList<Site> sitesOf(QTextFrame *frame)
{
    auto *table = qobject_cast<QTextTable *>(frame);
    QList<Site> sites { Site { frame->frameFormat(), [frame, table](const QTextFormat &other) {
                                  if (table)
                                      table->setFormat(other.toTableFormat());
                                  else
                                      frame->setFrameFormat(other.toFrameFormat());
                              } } };
    for (QTextTableCell cell : cellsOf(table))
        sites += Site { cell.format(),
            [cell](const QTextFormat &other) mutable { cell.setFormat(other.toCharFormat()); } };
    return sites;
}

/// A label text has one colour only, and no site.
QList<Site> sitesOf(TextItem &text)
{
    QList<Site> sites;
    if (!dynamic_cast<RichTextItem *>(&text))
        return sites;
    for (QTextBlock block = text.document()->begin(); block.isValid(); block = block.next())
        sites += sitesOf(block);
    for (QTextFrame *frame : framesOf(text.document()->rootFrame()))
        sites += sitesOf(frame);
    return sites;
}

void replacePicture(QTextDocument &document, const QString &name, const TextColors::Change &change)
{
    const QUrl url(name);
    auto picture = document.resource(QTextDocument::ImageResource, url).value<QImage>();
    picture.convertTo(QImage::Format_ARGB32);
    for (int y = 0; y < picture.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(picture.scanLine(y));
        for (int x = 0; x < picture.width(); ++x)
            line[x] = changed(QColor::fromRgba(line[x]), change).rgba();
    }
    document.addResource(QTextDocument::ImageResource, url, picture);
}

} // namespace

QList<QColor> TextColors::of(Item &item)
{
    auto *text = dynamic_cast<TextItem *>(&item);
    QList<QColor> colors;
    if (!text || text->document()->isEmpty())
        return colors;
    const auto note = [&colors](const QColor &color) {
        if (!colors.contains(color))
            colors += color;
        return color;
    };
    const QList<Site> sites = sitesOf(*text);
    const auto isPlain = [](const Site &site) {
        return site.isRun && !site.format.hasProperty(QTextFormat::ForegroundBrush);
    };
    if (sites.isEmpty() || std::ranges::any_of(sites, isPlain))
        static_cast<void>(changed(text->getItemTextColor(), note));
    for (const Site &site : sites) {
        static_cast<void>(changed(site.format, note));
        if (isPlainRule(site.format))
            note(QGuiApplication::palette().color(QPalette::Dark));
    }
    return colors;
}

void TextColors::replace(TextItem &text, const Change &change, const Change &changePixel)
{
    const QList<Site> sites = sitesOf(text);
    QSet<QString> pictures; // each once, however often it is shown
    text.setItemTextColor(changed(text.getItemTextColor(), change)); // of all runs
    QTextCursor all(text.document());
    all.beginEditBlock();
    for (const Site &site : sites) {
        site.replace(changed(site.format, change));
        if (site.format.isImageFormat())
            pictures.insert(site.format.toImageFormat().name());
    }
    all.endEditBlock();
    for (const QString &name : std::as_const(pictures))
        replacePicture(*text.document(), name, changePixel);
}
