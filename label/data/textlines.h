// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/data/datainput.h"

#include <QByteArray>
#include <QStringDecoder>

#include <memory>
#include <optional>

/// The lines of a text file of any encoding, as UTF-8.
class TextLines
{
public:
    /// Takes the input. An empty encoding is that of the byte order mark, or else UTF-8. Null, with the
    /// reason in problems, for an encoding that is not known.
    [[nodiscard]] static std::unique_ptr<TextLines> of(
        DataInput input, const QByteArray &encoding, Problems &problems);
    Q_DISABLE_COPY_MOVE(TextLines)

    [[nodiscard]] const QString &name() const { return m_input.name; }
    /// Which of comma, semicolon, tabulator and bar the first line with something on it has most of, outside
    /// quotes; a comma if there is none.
    [[nodiscard]] char likelyDelimiter();
    /// The next line, with its end; the last may have none. False at the end, and where problem() tells why
    /// there is no more.
    [[nodiscard]] bool readLine(QByteArray &line);
    [[nodiscard]] const std::optional<Problem> &problem() const { return m_problem; }
    /// How many lines there are in all if the others are as long as those so far, of which there are some.
    /// Nothing before the first one, and for what is no file.
    [[nodiscard]] std::optional<qint64> estimate(qint64 lines) const;

private:
    explicit TextLines(DataInput input);

    [[nodiscard]] bool chooseDecoder(const QByteArray &encoding, Problems &problems);
    void readMore();
    /// False when there is nothing more.
    bool decodeMore();
    /// The number of the line that what is decoded next belongs to.
    [[nodiscard]] qint64 nextLine() const;
    /// Whether the last character of all lacks bytes.
    [[nodiscard]] bool endsWithinCharacter();
    void failToDecode(qint64 line);
    void fail(const QString &where, const QString &what, const QString &advice = {});

    DataInput m_input;
    qint64 m_size; ///< in bytes, of what is to be read; 0 for what is no file
    QStringDecoder m_decoder;
    QByteArray m_raw; ///< read already, and not decoded
    QByteArray m_text; ///< decoded, and not given
    qsizetype m_given = 0;
    qint64 m_lines = 0; ///< that were given
    qint64 m_bytes = 0; ///< read
    qint64 m_decoded = 0; ///< bytes of all text
    bool m_ended = false;
    std::optional<Problem> m_problem;
};
