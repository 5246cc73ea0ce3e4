// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/odbcsession.h"

#include <QRegularExpression>
#include <QSqlField>
#include <QSqlRecord>

using namespace Qt::StringLiterals;

namespace {

/// Types of columns, by the numbers that ODBC gives them.
enum Type { Bit = -7, Float = 6, Real = 7, Double = 8 };

} // namespace

OdbcSession::OdbcSession(std::unique_ptr<SqlConnection> connection, const SqlSource::Options &options)
    : SqlSession(std::move(connection), options)
{
}

OdbcSession::~OdbcSession()
{
    answer().finish();
    QSqlDatabase(database()).rollback();
}

bool OdbcSession::ask(const QString &query)
{
    static const QRegularExpression reading(u"\\A[\\s(]*(?:SELECT|WITH|VALUES|TABLE)\\b[^;]*;?\\s*\\z"_s,
        QRegularExpression::CaseInsensitiveOption);
    if (!query.contains(reading)) {
        fail(problemOf(u"the query is not a single one that begins with SELECT, WITH, VALUES or TABLE"_s,
            u"a \";\" can only be its end"_s));
        return false;
    }
    // Without transactions, what keeps the query from changing anything is the rights of the user.
    QSqlDatabase(database()).transaction();
    if (!run(query))
        return false;
    const QSqlRecord record = answer().record();
    for (int i = 0; i < record.count(); ++i)
        m_types.append(record.field(i).typeID());
    return true;
}

QVariant OdbcSession::valueAt(int column) const
{
    const QVariant value = answer().value(column);
    if (value.isNull())
        return value;
    switch (m_types[column]) {
    case Bit:
        return value.toBool();
    case Float:
    case Real:
    case Double: {
        // Drivers write them as texts, each in its own way.
        bool isNumber = false;
        const double number = value.toDouble(&isNumber);
        return isNumber ? QVariant(number) : value;
    }
    default:
        return value;
    }
}
