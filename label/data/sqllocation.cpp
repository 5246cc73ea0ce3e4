// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/sqllocation.h"

#include "label/data/odbcstring.h"
#include "label/data/sqlpassword.h"
#include "label/nearestname.h"
#include "label/wording.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

struct Scheme
{
    QLatin1StringView name;
    SqlLocation::Kind kind;
};

constexpr std::array schemes {
    Scheme { "sqlite"_L1, SqlLocation::Sqlite },
    Scheme { "postgresql"_L1, SqlLocation::PostgreSql },
    Scheme { "postgres"_L1, SqlLocation::PostgreSql },
    Scheme { "odbc"_L1, SqlLocation::Odbc },
};

const Scheme *schemeOf(const QString &url)
{
    const QStringView name = QStringView(url).first(std::max<qsizetype>(url.indexOf(u':'), 0));
    const auto scheme = std::ranges::find_if(
        schemes, [name](const Scheme &known) { return name.compare(known.name, Qt::CaseInsensitive) == 0; });
    return scheme == schemes.end() ? nullptr : scheme;
}

/// The text with its "%20" read as UTF-8; nothing if that gives none.
std::optional<QString> decoded(const QString &text)
{
    static const QRegularExpression stray(u"%(?![0-9A-Fa-f]{2})"_s);
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QByteArray bytes = QByteArray::fromPercentEncoding(text.toUtf8());
    const QString result = utf8.decode(bytes);
    if (utf8.hasError() || text.contains(stray) || result.contains(QChar::Null))
        return {};
    return result;
}

/// Of a URL that may have a password anywhere, only its scheme is repeated.
std::optional<SqlLocation> refused(
    Problems &problems, QLatin1StringView scheme, const QString &what, const QString &advice)
{
    problems.append({ scheme + u":…"_s, {}, what, advice });
    return {};
}

// --- SQLite
// -----------------------------------------------------------------------------------------------------

/// By hand, since Qt takes names that begin with a colon for something else than files.
QString fullPath(const QString &path, const QString &folder)
{
    return QDir::cleanPath(path.startsWith(u'/') ? path : QDir(folder).absolutePath() + u'/' + path);
}

std::optional<SqlLocation> sqliteLocation(const QString &rest, const QString &baseFolder, Problems &problems)
{
    static const QRegularExpression form(u"\\A(?://(?=/))?((?!//)[^?]+)\\z"_s);
    const QRegularExpressionMatch match = form.match(rest);
    const std::optional<QString> path = decoded(match.captured(1));
    if (match.hasMatch() && path)
        return SqlLocation { SqlLocation::Sqlite, *path, fullPath(*path, baseFolder), {}, {}, -1, {} };
    problems.append({ u"sqlite:"_s + rest, {}, u"names no database file"_s,
        u"write sqlite:prices.db, or sqlite:///folder/prices.db for a full path, with %3F for a question mark"_s });
    return {};
}

// --- PostgreSQL
// -------------------------------------------------------------------------------------------------

constexpr auto postgresName = "postgresql"_L1;

/// Whether anything but a user's name is before the host. A password that should be encoded and is not can
/// reach into what then looks like the rest of the URL.
bool hasPassword(const QString &rest)
{
    static const QRegularExpression form(
        u"\\A//.*[:/?@].*@"_s, QRegularExpression::DotMatchesEverythingOption);
    return rest.contains(form);
}

/// The options that change how the server is reached; others could name files to write, or other servers.
std::optional<QStringList> postgresOptions(const QString &query, Problems &problems)
{
    static const QStringList known { u"sslmode"_s, u"sslrootcert"_s, u"target_session_attrs"_s };
    static const QRegularExpression harmless(u"\\A[\\w./+~-]+\\z"_s);
    for (const QString &option : query.split(u'&', Qt::SkipEmptyParts)) {
        const QString name = option.section(u'=', 0, 0);
        if (name.endsWith("password"_L1)) {
            refused(problems, postgresName, SqlPassword::refusal(), SqlPassword::advice());
            return {};
        }
        if (!known.contains(name)) {
            refused(problems, postgresName, u"has an unknown option, %1"_s.arg(Wording::quoted(name)),
                u"known are "_s + known.join(u", "_s));
            return {};
        }
        if (!decoded(option.section(u'=', 1)).value_or(QString()).contains(harmless)) {
            refused(problems, postgresName, u"has an option without a usable value, %1"_s.arg(name),
                u"letters, digits and ./+~-_ can be used"_s);
            return {};
        }
    }
    return decoded(query)->split(u'&', Qt::SkipEmptyParts);
}

QString displayOf(const SqlLocation &server)
{
    return u"postgresql://%1%2%3/%4"_s.arg(server.user.isEmpty() ? QString() : server.user + u'@',
        server.host.contains(u':') ? u"[%1]"_s.arg(server.host) : server.host,
        server.port < 0 ? QString() : u":%1"_s.arg(server.port), server.database);
}

std::optional<SqlLocation> postgresLocation(const QString &rest, Problems &problems)
{
    if (hasPassword(rest))
        return refused(problems, postgresName, SqlPassword::refusal(), SqlPassword::advice());
    static const QRegularExpression form(u"\\A//(?:([^@/?:]*)@)?(?:\\[([^\\]@/?]*)\\]|([^\\[\\]:@/?]*))"
                                         "(?::([0-9]{1,5}))?(?:/([^/?]*))?(?:\\?(.*))?\\z"_s);
    const QRegularExpressionMatch match = form.match(rest);
    const std::optional<QString> user = decoded(match.captured(1));
    const std::optional<QString> host = decoded(match.captured(2) + match.captured(3));
    const std::optional<QString> database = decoded(match.captured(5));
    if (!match.hasMatch() || !user || !host || !database)
        return refused(problems, postgresName, u"names no database"_s,
            u"write postgresql://user@host:5432/database, with %40 and the like for marks in names"_s);
    const std::optional<QStringList> options = postgresOptions(match.captured(6), problems);
    if (!options)
        return {};
    const int port = match.captured(4).isEmpty() ? -1 : match.captured(4).toInt();
    SqlLocation server { SqlLocation::PostgreSql, {}, *database, *host, *user, port, *options };
    server.display = displayOf(server);
    return server;
}

// --- ODBC
// -------------------------------------------------------------------------------------------------------

std::optional<SqlLocation> odbcLocation(const QString &rest, Problems &problems)
{
    const OdbcString connection(rest);
    if (const std::optional<Problem> problem = connection.problem())
        return refused(problems, "odbc"_L1, problem->what, problem->advice);
    return SqlLocation { SqlLocation::Odbc, u"odbc:"_s + rest, rest, {}, {}, -1, {} };
}

} // namespace

std::optional<SqlLocation> SqlLocation::fromUrl(
    const QString &url, const QString &baseFolder, Problems &problems)
{
    const Scheme *scheme = schemeOf(url);
    if (!scheme) {
        problems.append({ {}, {}, u"the place of the data is no URL of a database"_s,
            u"write sqlite:…, postgresql:… or odbc:…"_s });
        return {};
    }
    const QString rest = url.sliced(scheme->name.size() + 1);
    switch (scheme->kind) {
    case PostgreSql:
        return postgresLocation(rest, problems);
    case Odbc:
        return odbcLocation(rest, problems);
    default:
        return sqliteLocation(rest, baseFolder, problems);
    }
}

std::optional<QString> SqlLocation::urlOfFile(const QString &path)
{
    constexpr QByteArrayView beginning("SQLite format 3\0", 16);
    QFile file(path);
    // Opening a pipe would wait for somebody who writes.
    const bool isDatabase = QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly)
        && file.read(beginning.size()) == beginning;
    return isDatabase ? std::optional(u"sqlite:"_s + QString::fromLatin1(QUrl::toPercentEncoding(path, "/")))
                      : std::nullopt;
}

std::optional<Problem> SqlLocation::unknownScheme(const QString &text)
{
    static const QRegularExpression form(u"\\A([A-Za-z][A-Za-z0-9+.-]+):"_s);
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch() || isUrl(text) || QFileInfo::exists(text))
        return {};
    const QString scheme = match.captured(1);
    QStringList names;
    for (const Scheme &known : schemes)
        names.append(known.name);
    const QString meant = nearestName(scheme, names);
    return Problem { scheme + u":…"_s, {}, u"names no data that can be read"_s,
        meant.isEmpty()
            ? u"give a file, or a database as sqlite:FILE, postgresql://USER@HOST/DATABASE or odbc:DSN=NAME"_s
            : u"did you mean %1:?"_s.arg(meant) };
}

bool SqlLocation::isUrl(const QString &text)
{
    return schemeOf(text) != nullptr;
}
