// SPDX-License-Identifier: BSD-3-Clause
#include "label/jsonscan.h"

#include "label/labellimits.h"
#include "label/problemlog.h"

#include <QJsonDocument>
#include <QJsonParseError>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// "line 3, column 7"; a column is a character, whatever it takes in UTF-8.
QString placeOf(const QByteArray &text, qsizetype offset, qint64 firstLine)
{
    const auto before = QByteArrayView(text).first(std::clamp<qsizetype>(offset, 0, text.size()));
    const auto line = std::ranges::count(before, '\n') + firstLine;
    const auto inLine = before.sliced(before.lastIndexOf('\n') + 1);
    const auto column = std::ranges::count_if(inLine, [](char c) { return (c & 0xC0) != 0x80; }) + 1;
    return u"line %1, column %2"_s.arg(line).arg(column);
}

/// What to look for. The parser gives up behind the mistake rather than at it.
QString adviceOn(QJsonParseError::ParseError error)
{
    switch (error) {
    case QJsonParseError::UnterminatedObject:
    case QJsonParseError::UnterminatedArray:
    case QJsonParseError::MissingValueSeparator:
        return u"look before this place for a missing comma, quote or bracket"_s;
    case QJsonParseError::MissingNameSeparator:
        return u"look before this place for a missing colon or quote"_s;
    case QJsonParseError::MissingObject:
        return u"remove the comma before this place"_s;
    case QJsonParseError::IllegalValue:
    case QJsonParseError::IllegalNumber:
        return u"write text in double quotes, and numbers in digits with a point"_s;
    case QJsonParseError::IllegalUTF8String:
        return u"save the file as UTF-8"_s;
    default:
        return {};
    }
}

/// The offset behind the string that begins at offset.
qsizetype endOfString(const QByteArray &text, qsizetype offset)
{
    for (++offset; offset < text.size() && text[offset] != '"'; ++offset) {
        if (text[offset] == '\\')
            ++offset;
    }
    return offset + 1;
}

/// Counts values without looking at them: a container with members has one less comma than members.
class Counter
{
public:
    Counter(ProblemLog &log, qint64 firstLine)
        : m_log(log)
        , m_firstLine(firstLine)
    {
    }

    [[nodiscard]] bool accepts(const QByteArray &text)
    {
        qsizetype offset = 0;
        while (offset < text.size()) {
            if (text[offset] == '"') {
                offset = endOfString(text, offset);
                continue;
            }
            count(text[offset]);
            if (m_values > LabelLimits::MaxJsonValues || m_depth > LabelLimits::MaxJsonNesting)
                return refuse(text, offset);
            ++offset;
        }
        return true;
    }

private:
    void count(char c)
    {
        const bool opens = c == '{' || c == '[';
        const bool closes = c == '}' || c == ']';
        m_values += opens || c == ',' ? 1 : 0;
        m_depth += int(opens) - int(closes);
    }

    bool refuse(const QByteArray &text, qsizetype offset)
    {
        const QString where = placeOf(text, offset, m_firstLine);
        if (m_depth > LabelLimits::MaxJsonNesting)
            m_log.add(where, u"nested deeper than %1 levels"_s.arg(LabelLimits::MaxJsonNesting));
        else
            m_log.add(where, u"more than %1 values"_s.arg(LabelLimits::MaxJsonValues),
                u"split the file into several"_s);
        return false;
    }

    ProblemLog &m_log;
    qint64 m_firstLine;
    qint64 m_values = 0;
    int m_depth = 0;
};

} // namespace

std::optional<QJsonDocument> JsonScan::parse(const QByteArray &text, ProblemLog &log, qint64 firstLine)
{
    if (!Counter(log, firstLine).accepts(text))
        return {};
    QJsonParseError error;
    QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error == QJsonParseError::NoError)
        return document;
    log.add(placeOf(text, error.offset, firstLine), u"no valid JSON, "_s + error.errorString(),
        adviceOn(error.error));
    return {};
}

std::optional<QJsonObject> JsonScan::parseObject(const QByteArray &text, ProblemLog &log)
{
    const std::optional<QJsonDocument> document = parse(text, log);
    if (!document)
        return {};
    if (document->isObject())
        return document->object();
    log.add({}, u"holds a list, not a label"_s);
    return {};
}
