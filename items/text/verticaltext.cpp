// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/verticaltext.h"

#include <QRegularExpression>
#include <QTextBoundaryFinder>

#include <algorithm>

QString VerticalText::fromHorizontal(const QString &text)
{
    return fromHorizontalWithSpaces(onOneLine(text).simplified());
}

QString VerticalText::fromHorizontalWithSpaces(const QString &text)
{
    return stacked(charactersOf(onOneLine(text)));
}

QString VerticalText::toHorizontal(const QString &vertical)
{
    return charactersIn(vertical).join(QString());
}

QString VerticalText::onOneLine(QString horizontal)
{
    horizontal.remove(u'\n').remove(u'\r').replace(u'\t', u' ');
    return horizontal.replace(QChar::LineSeparator, u' ').replace(QChar::ParagraphSeparator, u' ');
}

QStringList VerticalText::charactersOf(const QString &horizontal)
{
    QStringList characters;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, horizontal);
    for (qsizetype from = 0, to = finder.toNextBoundary(); to > from; to = finder.toNextBoundary()) {
        characters.append(horizontal.sliced(from, to - from));
        from = to;
    }
    return characters;
}

QStringList VerticalText::charactersIn(const QString &vertical)
{
    static const QRegularExpression lineBreak(QStringLiteral("\n|\r\n|\r"));
    QStringList lines = vertical.split(lineBreak);
    std::ranges::replace_if(lines, &QString::isEmpty, QStringLiteral(" "));
    return lines;
}

QString VerticalText::stacked(const QStringList &characters)
{
    return characters.join(u'\n');
}

int VerticalText::indexAt(const QString &vertical, int position)
{
    const QStringView before
        = QStringView(vertical).first(std::clamp<qsizetype>(position, 0, vertical.size()));
    const bool behindCharacter = !before.isEmpty() && before.back() != u'\n';
    return int(before.count(u'\n')) + (behindCharacter ? 1 : 0);
}

int VerticalText::positionOf(const QString &vertical, int index)
{
    qsizetype position = 0;
    for (; index > 0; --index) {
        const qsizetype lineEnd = vertical.indexOf(u'\n', position);
        if (lineEnd < 0)
            return int(vertical.size());
        position = lineEnd + 1;
    }
    return int(position);
}
