// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/datasourcemap.h"

#include "label/jsonmembers.h"
#include "label/jsonpointer.h"
#include "label/nearestname.h"
#include "label/problemlog.h"
#include "label/wording.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace {

using Kind = DataSource::Kind;

/// In the order of the kinds.
const QStringList kindNames { u"csv"_s, u"json"_s, u"sql"_s, u"counter"_s, u"date"_s, u"concatenation"_s };

/// A text of a source: its key, the kinds that have it, and whether they cannot do without.
struct TextMember
{
    QString key;
    QString DataSource::*text;
    QList<Kind> kinds;
    bool required;
};

const QList<TextMember> &textMembers()
{
    static const QList<TextMember> members {
        { u"location"_s, &DataSource::location, { Kind::Csv, Kind::Json, Kind::Sql }, true },
        { u"query"_s, &DataSource::query, { Kind::Sql }, true },
        { u"encoding"_s, &DataSource::encoding, { Kind::Csv }, false },
        { u"delimiter"_s, &DataSource::delimiter, { Kind::Csv }, false },
        { u"text"_s, &DataSource::text, { Kind::Concatenation }, true },
        { u"form"_s, &DataSource::form, { Kind::Counter, Kind::Date }, false },
    };
    return members;
}

/// A whole number that may be missing.
template <typename Number> void readNumber(JsonMembers &members, const QString &key, Number &number)
{
    if (const std::optional<qint64> found = members.optionalInteger(key, std::numeric_limits<Number>::max()))
        number = Number(*found);
}

std::optional<Kind> readKind(JsonMembers &members, const QString &pointer, ProblemLog &log)
{
    const std::optional<QString> name = members.text(u"kind"_s);
    const qsizetype index = name ? kindNames.indexOf(*name) : -1;
    if (index >= 0)
        return static_cast<Kind>(index);
    if (!name)
        return {};
    const QString meant = nearestName(*name, kindNames);
    log.add(JsonPointer::member(pointer, u"kind"_s), Wording::quoted(*name) + u" is no kind of source"_s,
        meant.isEmpty() ? u"use one of "_s + kindNames.join(u", "_s)
                        : u"did you mean %1?"_s.arg(Wording::quoted(meant)));
    return {};
}

void readSource(const QJsonObject &json, const QString &pointer, ProblemLog &log, QList<DataSource> &sources)
{
    JsonMembers members(json, pointer, log);
    DataSource source;
    const std::optional<qint64> id = members.integer(u"id"_s, std::numeric_limits<int>::max());
    const std::optional<Kind> kind = readKind(members, pointer, log);
    if (!id || !kind)
        return;
    source.id = int(*id);
    source.kind = *kind;
    for (const TextMember &member : textMembers()) {
        if (member.kinds.contains(*kind))
            source.*member.text
                = (member.required ? members.text(member.key) : members.optionalText(member.key))
                      .value_or(QString());
    }
    if (*kind == Kind::Counter) {
        readNumber(members, u"start"_s, source.start);
        readNumber(members, u"step"_s, source.step);
    }
    if (*kind == Kind::Date)
        readNumber(members, u"days"_s, source.days);
    members.refuseOthers();
    sources.append(source);
}

} // namespace

QJsonArray DataSourceMap::toJson(const QList<DataSource> &sources)
{
    const DataSource fresh;
    QJsonArray array;
    for (const DataSource &source : sources) {
        QJsonObject json { { u"id"_s, source.id }, { u"kind"_s, kindNames.value(int(source.kind)) } };
        for (const TextMember &member : textMembers()) {
            const QString &text = source.*member.text;
            if (member.kinds.contains(source.kind) && (member.required || !text.isEmpty()))
                json.insert(member.key, text);
        }
        if (source.kind == Kind::Counter && source.start != fresh.start)
            json.insert(u"start"_s, source.start);
        if (source.kind == Kind::Counter && source.step != fresh.step)
            json.insert(u"step"_s, source.step);
        if (source.kind == Kind::Date && source.days != fresh.days)
            json.insert(u"days"_s, source.days);
        array.append(json);
    }
    return array;
}

QList<DataSource> DataSourceMap::fromJson(const QJsonArray &json, const QString &pointer, ProblemLog &log)
{
    QList<DataSource> sources;
    for (qsizetype i = 0; i < json.size(); ++i) {
        const QString own = JsonPointer::element(pointer, i);
        if (json.at(i).isObject())
            readSource(json.at(i).toObject(), own, log, sources);
        else
            log.add(own, u"is %1, not an object"_s.arg(JsonMembers::typeName(json.at(i).type())));
    }
    return sources;
}
