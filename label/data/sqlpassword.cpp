// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/sqlpassword.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

using namespace Qt::StringLiterals;

namespace {

/// Of a line; servers take fewer.
constexpr qint64 longestPassword = 4096;

std::optional<QString> refused(
    Problems &problems, const QString &path, const QString &what, const QString &advice = {})
{
    problems.append({ path, {}, what, advice });
    return {};
}

/// A line without its end, as text. Nothing for bytes that are none.
std::optional<QString> textOf(QByteArray line)
{
    if (line.endsWith('\n'))
        line.chop(1);
    if (line.endsWith('\r'))
        line.chop(1);
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8.decode(line);
    if (utf8.hasError() || text.contains(QChar::Null))
        return {};
    return text;
}

} // namespace

QString SqlPassword::refusal()
{
    return u"has a password, which others could read"_s;
}

QString SqlPassword::advice()
{
    return u"leave it out; it belongs in a password file, or for PostgreSQL in PGPASSWORD or ~/.pgpass"_s;
}

std::optional<QString> SqlPassword::fromFile(const QString &path, Problems &problems)
{
    const QFileInfo info(path);
    if (!info.exists())
        return refused(problems, path, u"does not exist"_s);
    // A pipe or a device could keep the reader waiting.
    if (!info.isFile())
        return refused(problems, path, u"is no ordinary file"_s);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return refused(problems, path, u"cannot be read: "_s + file.errorString());
    constexpr QFile::Permissions others
        = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    if (file.permissions() & others)
        return refused(problems, path, u"holds a password, and others than its owner may read or write it"_s,
            u"chmod 600 makes it the owner's"_s);
    const std::optional<QString> password = textOf(file.readLine(longestPassword));
    if (!password || password->isEmpty())
        return refused(problems, path, u"has no password in its first line"_s);
    return password;
}
