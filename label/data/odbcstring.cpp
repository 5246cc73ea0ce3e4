// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/odbcstring.h"

#include "label/data/sqlpassword.h"
#include "label/wording.h"

#include <QRegularExpression>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

const QStringList &passwordKeywords()
{
    static const QStringList keywords { u"pwd"_s, u"password"_s, u"pass"_s, u"passwd"_s };
    return keywords;
}

/// Those that say whom to ask for what. Others have drivers load libraries, or write files and logs.
const QStringList &harmlessKeywords()
{
    static const QStringList keywords { u"dsn"_s, u"driver"_s, u"server"_s, u"servername"_s, u"host"_s,
        u"port"_s, u"database"_s, u"db"_s, u"dbq"_s, u"uid"_s, u"user"_s, u"username"_s, u"encrypt"_s,
        u"trustservercertificate"_s, u"sslmode"_s, u"charset"_s, u"tds_version"_s };
    return keywords;
}

} // namespace

OdbcString::OdbcString(const QString &text)
    : m_text(text)
{
    static const QRegularExpression entry(
        u"\\G\\s*([^=;{}]*?)\\s*=\\s*(\\{(?:[^}]|\\}\\})*\\}|[^;{}]*?)\\s*(?:;\\s*|\\z)"_s);
    qsizetype end = 0;
    for (const QRegularExpressionMatch &match : entry.globalMatch(text)) {
        m_entries.emplace_back(match.captured(1).toLower(), match.captured(2));
        end = match.capturedEnd();
    }
    m_isWhole = end == text.size();
}

std::optional<Problem> OdbcString::problem() const
{
    static const QRegularExpression password(
        u"\\b(%1)\\s*="_s.arg(passwordKeywords().join(u'|')), QRegularExpression::CaseInsensitiveOption);
    if (m_text.contains(password))
        return Problem { {}, {}, SqlPassword::refusal(), SqlPassword::advice() };
    if (!m_isWhole || m_text.contains(QChar::Null))
        return Problem { {}, {}, u"is no connection string"_s, u"write odbc:DSN=prices;UID=user"_s };
    for (const auto &[keyword, value] : m_entries) {
        if (!harmlessKeywords().contains(keyword))
            return Problem { {}, {}, u"has an unknown keyword, %1"_s.arg(Wording::quoted(keyword)),
                u"put it into a data source of odbc.ini, and name that with DSN="_s };
        // A document would choose what code runs.
        if (keyword == "driver"_L1 && value.contains(u'/'))
            return Problem { {}, {}, u"has the path of a driver"_s, u"name it as odbcinst.ini does"_s };
    }
    if (valueOf("dsn"_L1).isEmpty() && valueOf("driver"_L1).isEmpty())
        return Problem { {}, {}, u"names neither a data source nor a driver"_s, u"write odbc:DSN=prices"_s };
    // Qt takes the string for the name of a file that has another one.
    if (m_text.contains(".dsn"_L1, Qt::CaseInsensitive))
        return Problem { {}, {}, u"names a file with a data source"_s, u"put that into odbc.ini"_s };
    return {};
}

QString OdbcString::databaseName() const
{
    // Without one of them, Qt writes "DSN=" in front.
    static const QRegularExpression isWholeString(
        u"(?:driver|server)="_s, QRegularExpression::CaseInsensitiveOption);
    const QString source = valueOf("dsn"_L1);
    QStringList parts;
    for (const auto &[keyword, value] : m_entries) {
        if (keyword != "dsn"_L1)
            parts.append(keyword + u'=' + value);
    }
    const QString rest = parts.join(u';');
    if (source.isEmpty())
        return rest;
    return (rest.contains(isWholeString) ? u"DSN="_s : QString()) + source
        + (rest.isEmpty() ? u""_s : u';' + rest);
}

QString OdbcString::quoted(const QString &value)
{
    static const QRegularExpression marks(u"[\\[\\]{}(),;?*=!@]|\\A\\s|\\s\\z"_s);
    return value.contains(marks) ? u'{' + QString(value).replace(u"}"_s, u"}}"_s) + u'}' : value;
}

QString OdbcString::valueOf(QLatin1StringView keyword) const
{
    const auto entry = std::ranges::find(m_entries, keyword, &std::pair<QString, QString>::first);
    return entry == m_entries.end() ? QString() : entry->second;
}
