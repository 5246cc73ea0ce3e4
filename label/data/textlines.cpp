// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/textlines.h"

#include "label/labellimits.h"
#include "label/wording.h"

#include <QFileDevice>

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 chunkBytes = 64 * 1024;
constexpr std::array<char, 4> delimiters { ',', ';', '\t', '|' };

/// How often a character is in a line, outside quotes.
qsizetype countOf(char delimiter, QByteArrayView line)
{
    bool quoted = false;
    qsizetype count = 0;
    for (const char c : line) {
        quoted = quoted != (c == '"');
        count += !quoted && c == delimiter ? 1 : 0;
    }
    return count;
}

} // namespace

TextLines::TextLines(DataInput input)
    : m_input(std::move(input))
    , m_size(m_input.device->isSequential() ? 0 : m_input.device->size() - m_input.device->pos())
{
}

std::unique_ptr<TextLines> TextLines::of(DataInput input, const QByteArray &encoding, Problems &problems)
{
    std::unique_ptr<TextLines> text(new TextLines(std::move(input)));
    return text->chooseDecoder(encoding, problems) ? std::move(text) : nullptr;
}

bool TextLines::chooseDecoder(const QByteArray &encoding, Problems &problems)
{
    readMore();
    if (encoding.isEmpty()) {
        m_decoder = QStringDecoder(QStringConverter::encodingForData(m_raw).value_or(QStringConverter::Utf8));
        return true;
    }
    m_decoder = QStringDecoder(encoding.constData());
    if (m_decoder.isValid())
        return true;
    problems.append(
        { m_input.name, {}, u"%1 is no known encoding"_s.arg(Wording::quoted(QString::fromLatin1(encoding))),
            u"for example UTF-8, UTF-16, ISO-8859-1 or windows-1252"_s });
    return false;
}

void TextLines::readMore()
{
    m_raw.resize(chunkBytes);
    const qint64 size = m_input.device->read(m_raw.data(), chunkBytes);
    m_raw.resize(std::max<qint64>(size, 0));
    m_bytes += m_raw.size();
    m_ended = m_raw.isEmpty();
    // A file that has reached its end answers 0, a sequential device -1: only the file's own error tells
    // more.
    const auto *file = qobject_cast<const QFileDevice *>(m_input.device.get());
    if (file && file->error() != QFileDevice::NoError)
        fail({}, u"cannot be read further: "_s + file->errorString());
    else if (m_bytes > LabelLimits::MaxDataBytes)
        fail({}, u"holds more than %1 bytes"_s.arg(LabelLimits::MaxDataBytes));
}

bool TextLines::decodeMore()
{
    if (m_raw.isEmpty() && !m_ended) {
        readMore();
        if (m_ended && !m_problem && endsWithinCharacter())
            failToDecode(nextLine());
    }
    if (m_problem || (m_ended && m_raw.isEmpty()))
        return false;
    const QString decoded = m_decoder.decode(std::exchange(m_raw, {}));
    if (m_decoder.hasError()) {
        const qsizetype bad = decoded.indexOf(QChar::ReplacementCharacter);
        failToDecode(nextLine() + decoded.first(std::max<qsizetype>(bad, 0)).count(u'\n'));
        return false;
    }
    m_text.remove(0, std::exchange(m_given, 0));
    const QByteArray text = decoded.toUtf8();
    m_text += text;
    m_decoded += text.size();
    return true;
}

char TextLines::likelyDelimiter()
{
    const auto isBlank = [this] { return QByteArrayView(m_text).sliced(m_given).trimmed().isEmpty(); };
    while ((isBlank() || !m_text.contains('\n')) && m_text.size() <= LabelLimits::MaxValueBytes
        && decodeMore()) { }
    QByteArrayView line = QByteArrayView(m_text).trimmed();
    if (const qsizetype end = line.indexOf('\n'); end >= 0)
        line.truncate(end);
    return *std::ranges::max_element(
        delimiters, {}, [line](char delimiter) { return countOf(delimiter, line); });
}

bool TextLines::readLine(QByteArray &line)
{
    qsizetype end = m_text.indexOf('\n', m_given);
    while (end < 0 && m_text.size() - m_given <= LabelLimits::MaxValueBytes && decodeMore())
        end = m_text.indexOf('\n', m_given);
    if (m_problem)
        return false;
    line = end < 0 ? m_text.sliced(m_given) : m_text.sliced(m_given, end + 1 - m_given);
    m_given += line.size();
    ++m_lines;
    return !line.isEmpty();
}

std::optional<qint64> TextLines::estimate(qint64 lines) const
{
    const qint64 given = m_decoded - (m_text.size() - m_given);
    if (given == 0 || m_size == 0)
        return {};
    const double bytes = double(m_bytes - m_raw.size()) * double(given) / double(m_decoded);
    return std::max(lines, qint64(std::round(double(lines) * double(m_size) / bytes)));
}

qint64 TextLines::nextLine() const
{
    return m_lines + 1 + m_text.sliced(m_given).count('\n');
}

bool TextLines::endsWithinCharacter()
{
    const QByteArray name = m_decoder.name();
    if (name.startsWith("UTF-16"))
        return m_bytes % 2 != 0;
    if (name.startsWith("UTF-32"))
        return m_bytes % 4 != 0;
    const QString end = m_decoder.decode("\n"); // takes what a decoder that waits for more has kept
    return m_decoder.hasError() || end != u"\n";
}

void TextLines::failToDecode(qint64 line)
{
    fail(u"line %1"_s.arg(line), u"is not written in %1"_s.arg(QString::fromLatin1(m_decoder.name())),
        u"name the encoding, for example windows-1252"_s);
}

void TextLines::fail(const QString &where, const QString &what, const QString &advice)
{
    if (!m_problem)
        m_problem = Problem { m_input.name, where, what, advice };
}
