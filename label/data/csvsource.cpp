// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/csvsource.h"

#include "label/data/columnnames.h"
#include "label/data/textlines.h"
#include "label/labellimits.h"
#include "label/wording.h"

#include <csv.h>

#include <deque>

using namespace Qt::StringLiterals;

namespace {

/// By how much room for a long cell grows: by the few bytes that are usual it would be copied for ever.
constexpr std::size_t cellBytes = 64 * 1024;

int isNoBlank(unsigned char /*character*/)
{
    return 0;
}

} // namespace

/// Cuts the text of a file into rows.
class CsvSource::Reader
{
public:
    struct Line
    {
        QStringList values;
        qint64 number; ///< the one that it begins on
    };

    Reader(std::unique_ptr<TextLines> text, char delimiter)
        : m_text(std::move(text))
    {
        csv_init(&m_parser, CSV_STRICT | CSV_STRICT_FINI);
        csv_set_delim(&m_parser, static_cast<unsigned char>(delimiter));
        csv_set_space_func(&m_parser, isNoBlank);
        csv_set_blk_size(&m_parser, cellBytes);
    }
    ~Reader() { csv_free(&m_parser); }
    Q_DISABLE_COPY_MOVE(Reader)

    /// Nothing at the end, and where problem() tells why there is no more.
    std::optional<Line> next()
    {
        while (m_lines.empty() && !m_ended)
            parseMore();
        if (m_lines.empty())
            return {};
        Line line = std::move(m_lines.front());
        m_lines.pop_front();
        return line;
    }

    [[nodiscard]] const std::optional<Problem> &problem() const { return m_problem; }
    [[nodiscard]] const QString &name() const { return m_text->name(); }
    /// Of all rows, when so many have been given.
    [[nodiscard]] std::optional<qint64> estimate(qint64 rows) const
    {
        return m_text->estimate(rows + qint64(m_lines.size()));
    }

private:
    static void valueEnds(void *bytes, std::size_t size, void *reader)
    {
        static_cast<Reader *>(reader)->addValue(static_cast<const char *>(bytes), size);
    }
    static void rowEnds(int /*terminator*/, void *reader) { static_cast<Reader *>(reader)->addRow(); }

    void addValue(const char *bytes, std::size_t size)
    {
        m_pending = 0;
        if (m_values.size() < LabelLimits::MaxColumns)
            m_values.append(QString::fromUtf8(bytes, qsizetype(size)));
        else
            fail(u"more than %1 values in a row"_s.arg(LabelLimits::MaxColumns), {});
    }

    void addRow()
    {
        if (m_problem)
            return;
        m_lines.push_back({ std::exchange(m_values, {}), m_rowBegin });
        m_rowBegin = m_line + 1;
    }

    /// By lines, so that the number of the one that a row begins on is known.
    void parseMore()
    {
        QByteArray line;
        if (!m_text->readLine(line)) {
            end();
            return;
        }
        if (m_values.isEmpty() && m_pending == 0)
            m_rowBegin = m_line;
        if (m_rowBegin == m_line && (line == "\n" || line == "\r\n")) {
            ++m_line;
            return;
        }
        m_pending += line.size();
        if (m_pending > LabelLimits::MaxValueBytes) {
            fail(
                u"a value of more than %1 bytes"_s.arg(LabelLimits::MaxValueBytes), u"is a quote missing?"_s);
            return;
        }
        const std::size_t parsed
            = csv_parse(&m_parser, line.constData(), std::size_t(line.size()), valueEnds, rowEnds, this);
        if (parsed != std::size_t(line.size()))
            fail(u"a quote in the middle of a value"_s,
                u"put the value in quotes, and each quote in it twice"_s);
        if (line.endsWith('\n'))
            ++m_line;
    }

    void end()
    {
        m_ended = true;
        if (m_text->problem())
            m_problem = m_text->problem();
        else if (!m_problem && csv_fini(&m_parser, valueEnds, rowEnds, this) != 0)
            fail(u"a value that begins with a quote, and does not end with one"_s, {});
    }

    void fail(const QString &what, const QString &advice)
    {
        m_ended = true;
        if (!m_problem)
            m_problem = Problem { name(), u"line %1"_s.arg(m_rowBegin), what, advice };
    }

    std::unique_ptr<TextLines> m_text;
    csv_parser m_parser;
    std::deque<Line> m_lines;
    QStringList m_values;
    std::optional<Problem> m_problem;
    qint64 m_line = 1;
    qint64 m_rowBegin = 1;
    qint64 m_pending = 0; ///< bytes since the last value ended
    bool m_ended = false;
};

CsvSource::CsvSource(std::unique_ptr<Reader> reader)
    : m_reader(std::move(reader))
{
}

CsvSource::~CsvSource() = default;

std::unique_ptr<CsvSource> CsvSource::open(DataInput input, const CsvDialect &dialect, Problems &problems)
{
    std::unique_ptr<TextLines> text = TextLines::of(std::move(input), dialect.encoding, problems);
    if (!text)
        return {};
    const char delimiter = dialect.delimiter ? dialect.delimiter : text->likelyDelimiter();
    std::unique_ptr<CsvSource> source(new CsvSource(std::make_unique<Reader>(std::move(text), delimiter)));
    const std::optional<Reader::Line> names = source->m_reader->next();
    const std::optional<Problem> &problem = source->m_reader->problem();
    if (!names) {
        problems.append(problem ? *problem
                                : Problem { source->m_reader->name(), {}, u"is empty"_s,
                                    u"the first row tells the names of the columns"_s });
        return {};
    }
    source->m_columns = names->values;
    const Problems unusable = ColumnNames::problems(names->values, source->m_reader->name());
    problems += unusable;
    return unusable.isEmpty() ? std::move(source) : nullptr;
}

/// The names of the columns are a row of the file.
std::optional<qint64> CsvSource::estimate() const
{
    const std::optional<qint64> rows = m_rows > 0 ? m_reader->estimate(m_rows + 1) : std::nullopt;
    return rows ? std::optional(*rows - 1) : std::nullopt;
}

RowResult CsvSource::next()
{
    std::optional<Reader::Line> line = m_reader->next();
    if (!line && m_reader->problem())
        return { RowResult::Failed, {}, *m_reader->problem() };
    if (!line)
        return {};
    Row row { ++m_rows, std::move(line->values), u"%1:%2"_s.arg(m_reader->name()).arg(line->number) };
    if (row.values.size() == m_columns.size())
        return { RowResult::Data, std::move(row), {} };
    const Problem problem { m_reader->name(), u"line %1"_s.arg(line->number),
        u"%1 values for %2 columns"_s.arg(row.values.size()).arg(m_columns.size()),
        u"an empty value needs its delimiter, too; one with a delimiter in it needs quotes"_s };
    row.values.clear();
    return { RowResult::Broken, std::move(row), problem };
}
