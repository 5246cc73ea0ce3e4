// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/sqlsource.h"

#include "label/data/columnnames.h"
#include "label/data/sqlpassword.h"
#include "label/data/sqlsession.h"

using namespace Qt::StringLiterals;

namespace {

/// Why a text is no query; nothing for one that a database can judge.
QString obstacle(const QString &query)
{
    if (query.trimmed().isEmpty())
        return u"there is no query"_s;
    // Databases would take what is in front of it for the whole.
    return query.contains(QChar::Null) ? u"the query holds a zero character"_s : QString();
}

Problems columnProblems(const QStringList &columns, const QString &name)
{
    if (columns.isEmpty())
        return { { name, {}, u"the query gives no columns"_s, u"let it be a SELECT"_s } };
    if (columns.size() > LabelLimits::MaxColumns)
        return { { name, {},
            u"the query gives more than %1 columns (%2)"_s.arg(LabelLimits::MaxColumns).arg(columns.size()),
            {} } };
    return ColumnNames::problems(columns, name);
}

} // namespace

SqlSource::SqlSource(const QString &name, const Options &options, std::unique_ptr<SqlSession> session)
    : m_name(name)
    , m_options(options)
    , m_session(std::move(session))
    , m_columns(m_session->columns())
{
}

SqlSource::~SqlSource() = default;

std::unique_ptr<SqlSource> SqlSource::open(
    const SqlLocation &location, const QString &query, const Options &options, Problems &problems)
{
    const QString reason = obstacle(query);
    if (!reason.isEmpty()) {
        problems.append({ location.display, {}, reason, u"write one that begins with SELECT"_s });
        return {};
    }
    const std::optional<QString> password
        = options.passwordFile.isEmpty() ? QString() : SqlPassword::fromFile(options.passwordFile, problems);
    std::unique_ptr<SqlSession> session
        = password ? SqlSession::open(location, *password, options, problems) : nullptr;
    if (!session)
        return {};
    if (!session->ask(query)) {
        problems.append(*session->problem());
        return {};
    }
    std::unique_ptr<SqlSource> source(new SqlSource(location.display, options, std::move(session)));
    const Problems unusable = columnProblems(source->m_columns, source->m_name);
    problems += unusable;
    return unusable.isEmpty() ? std::move(source) : nullptr;
}

RowResult SqlSource::next()
{
    if (m_last)
        return *m_last;
    std::optional<SqlSession::Values> values = m_session->next();
    if (!values) {
        m_last = m_session->problem() ? RowResult { RowResult::Failed, {}, *m_session->problem() }
                                      : RowResult {};
        return *m_last;
    }
    if (m_rows == m_options.maxRows) {
        m_last = RowResult { RowResult::Failed, {},
            { m_name, {}, u"the query gives more than %1 rows"_s.arg(m_options.maxRows),
                u"let it choose fewer"_s } };
        return *m_last;
    }
    const QString where = u"row %1"_s.arg(++m_rows);
    Row row { m_rows, std::move(values->values), m_name + u": "_s + where };
    if (values->what.isEmpty())
        return { RowResult::Data, std::move(row), {} };
    return { RowResult::Broken, std::move(row), { m_name, where, values->what, values->advice } };
}
