// SPDX-License-Identifier: BSD-3-Clause
#include "label/pdf/pdfstream.h"

#include "label/wholewrite.h"

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype bufferSize = 64 * 1024;
/// Longer pieces are contents of pages, pictures and fonts.
constexpr qint64 longestEdited = 512;
/// Qt counts the file's bytes in an int.
constexpr qint64 largestFile = std::numeric_limits<int>::max();

const QByteArray dateStart = "\n/CreationDate (D:";
const QByteArray pageStart = "<<\n/Type /Page\n";
const QByteArray boxStart = "/MediaBox [0 0 ";

/// Rounded down: a program that takes whole dots would make one more of the least bit above.
QByteArray points(double value)
{
    constexpr double decimals = 1e6;
    return QByteArray::number(std::floor(value * decimals + 1e-3) / decimals, 'f', 6);
}

bool isTableRow(const QByteArray &piece)
{
    return piece.size() == 20 && piece.endsWith(" 00000 n \n");
}

} // namespace

PdfStream::PdfStream(QIODevice &target, const QDateTime &created)
    : m_target(target)
    , m_date("\n")
{
    if (created.isValid())
        m_date = dateStart + created.toUTC().toString(u"yyyyMMddHHmmss"_s).toLatin1() + "Z)\n";
    m_waiting.reserve(2 * bufferSize);
}

void PdfStream::setPageSize(QSizeF exact, QSizeF rounded)
{
    m_exact = exact;
    m_rounded = rounded;
}

bool PdfStream::finish(int pages)
{
    flush();
    // What a Qt of another version may write would have passed unchanged.
    if (!m_failed && (m_pages != pages || !m_inTail))
        fail(u"Qt wrote no pages of the exact size"_s);
    return !m_failed;
}

void PdfStream::fail(const QString &why)
{
    m_failed = true;
    m_failure = why;
}

qint64 PdfStream::readData(char * /*data*/, qint64 /*size*/)
{
    return -1;
}

qint64 PdfStream::writeData(const char *data, qint64 size)
{
    if (m_failed)
        return size; // Qt looks at no errors and would only slow down
    if (size > longestEdited) {
        put(data, size);
    } else {
        const QByteArray piece = edited(QByteArray::fromRawData(data, size));
        put(piece.constData(), piece.size());
        if (piece.size() != size) {
            m_growth += piece.size() - size;
            m_moves.emplace_back(m_position, m_growth);
        }
    }
    m_position += size;
    if (m_position > largestFile)
        fail(u"it would be larger than 2 GiB"_s);
    return size;
}

QByteArray PdfStream::edited(const QByteArray &piece)
{
    if (m_inZone)
        return withoutZone(piece);
    if (piece.startsWith(dateStart)) {
        m_inZone = true;
        return m_date;
    }
    if (piece.startsWith(pageStart))
        return withExactPage(piece);
    if (piece.startsWith("xref\n"))
        m_inTable = true;
    else if (m_inTable && isTableRow(piece))
        return moved(piece.first(10)).rightJustified(10, '0') + piece.sliced(10);
    const qsizetype tail = m_inTable ? piece.indexOf("startxref\n") : -1;
    if (tail < 0)
        return piece;
    m_inTail = true;
    const qsizetype from = tail + 10;
    const qsizetype end = piece.indexOf('\n', from);
    return piece.first(from) + moved(piece.sliced(from, end - from)) + piece.sliced(end);
}

QByteArray PdfStream::withExactPage(const QByteArray &piece)
{
    const qsizetype from = piece.indexOf(boxStart) + boxStart.size();
    const qsizetype end = piece.indexOf(']', from);
    if (from < boxStart.size() || end < 0)
        return piece;
    // Units of more than a point, which very long pages have, make both numbers smaller.
    const double unit = piece.sliced(from, end - from).split(' ').first().toDouble() / m_rounded.width();
    ++m_pages;
    return piece.first(from) + points(m_exact.width() * unit) + ' ' + points(m_exact.height() * unit)
        + piece.sliced(end);
}

/// The time zone follows in a piece of its own, and the date has been written with one.
QByteArray PdfStream::withoutZone(const QByteArray &piece)
{
    const qsizetype end = piece.indexOf(")\n");
    if (end < 0)
        return {};
    m_inZone = false;
    return piece.sliced(end + 2);
}

QByteArray PdfStream::moved(const QByteArray &offset) const
{
    const qint64 position = offset.toLongLong();
    const auto after
        = std::ranges::upper_bound(m_moves, position, {}, [](const auto &move) { return move.first; });
    return QByteArray::number(after == m_moves.begin() ? position : position + std::prev(after)->second);
}

void PdfStream::put(const char *data, qint64 size)
{
    m_waiting.append(data, size);
    if (m_waiting.size() >= bufferSize)
        flush();
}

void PdfStream::flush()
{
    if (!m_failed && !writeWhole(m_target, m_waiting))
        fail(m_target.errorString());
    m_waiting.resize(0);
}
