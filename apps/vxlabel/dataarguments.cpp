// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/dataarguments.h"

#include "apps/vxlabel/commandline.h"
#include "apps/vxlabel/optiongroup.h"
#include "items/core/item.h"
#include "label/data/rowsources.h"
#include "label/data/sqllocation.h"
#include "label/itemtree.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <CLI/CLI.hpp>

using namespace Qt::StringLiterals;

namespace {

/// The character that "tab", ";" or "\\t" stands for.
std::string delimiterOf(const std::string &text)
{
    return text == "tab" || text == "\\t" ? "\t" : text;
}

void collectSources(const Item &item, QSet<int> &ids)
{
    ids.insert(item.getDatasourceId());
    for (const Item *member : ItemTree::membersOf(item))
        collectSources(*member, ids);
}

/// The sources of rows that items are bound to, or all if none is.
QList<DataSource> rowSourcesOf(const LabelDocument &label)
{
    QSet<int> ids;
    for (const std::unique_ptr<Item> &item : label.items())
        collectSources(*item, ids);
    QList<DataSource> all;
    QList<DataSource> bound;
    for (const DataSource &source : label.sources()) {
        if (source.isFunction())
            continue;
        all.append(source);
        if (ids.contains(source.id))
            bound.append(source);
    }
    return bound.isEmpty() ? all : bound;
}

/// The one source of the label that rows come from. Nothing, with the reason in problems, if there is none.
std::optional<DataSource> sourceOf(const LabelDocument &label, const QString &labelPath, Problems &problems)
{
    const QList<DataSource> sources = rowSourcesOf(label);
    if (sources.size() == 1 && sources[0].kind != DataSource::Kind::Sql)
        return sources[0];
    if (sources.isEmpty())
        problems.append({ labelPath, {}, u"names no data"_s, u"give --data FILE"_s });
    else if (sources.size() > 1)
        problems.append({ labelPath, u"/sources"_s,
            u"its items take rows from %1 sources"_s.arg(sources.size()), u"choose with --data"_s });
    else
        problems.append(
            { labelPath, u"/sources"_s, u"names a database, which is asked only when you say so"_s,
                u"give --data @%1"_s.arg(sources[0].id) });
    return {};
}

/// The source of the label that "@2" names. Nothing, with the reason in problems, if there is none.
std::optional<DataSource> sourceOf(
    const LabelDocument &label, const QString &labelPath, const QString &name, Problems &problems)
{
    bool isNumber = false;
    const DataSource *source = DataSources::find(label.sources(), name.sliced(1).toInt(&isNumber));
    if (isNumber && source && !source->isFunction())
        return *source;
    QStringList ids;
    for (const DataSource &known : label.sources()) {
        if (!known.isFunction())
            ids.append(u"@%1"_s.arg(known.id));
    }
    problems.append({ labelPath, u"/sources"_s, u"there is no source of rows "_s + name,
        ids.isEmpty() ? QString() : u"there are "_s + ids.join(u", "_s) });
    return {};
}

/// The source that the arguments describe. Nothing, with the reason in problems, if they do not go together.
std::optional<DataSource> typedSource(const DataArguments &arguments, Problems &problems)
{
    DataSource source;
    const QString location = QFile::decodeName(arguments.location.c_str());
    source.location = location;
    if (arguments.kind.empty())
        source.location = SqlLocation::urlOfFile(location).value_or(location);
    source.kind = arguments.kind == "json" ? DataSource::Kind::Json
        : arguments.kind == "csv"          ? DataSource::Kind::Csv
                                           : RowSources::kindOf(source.location);
    source.query = QString::fromStdString(arguments.query);
    source.encoding = QString::fromStdString(arguments.encoding);
    source.delimiter = QString::fromStdString(delimiterOf(arguments.delimiter));
    if (const std::optional<Problem> unknown = SqlLocation::unknownScheme(source.location)) {
        problems.append(*unknown);
        return {};
    }
    if ((source.kind == DataSource::Kind::Sql) != source.query.isEmpty())
        return source;
    if (source.query.isEmpty())
        problems.append({ source.location == location ? QString() : location, {},
            u"a database needs a query"_s, u"give --query, for example 'SELECT * FROM labels'"_s });
    else if (!QFileInfo::exists(source.location))
        problems.append({ source.location, {}, u"does not exist"_s, {} });
    else
        problems.append({ source.location, {}, u"is no database, and takes no --query"_s,
            u"for example sqlite:prices.db"_s });
    return {};
}

/// The files that rows are read from, and the password.
QStringList filesOf(const DataSource &source, const RowSources::Place &place)
{
    Problems told; // when the rows were opened
    QStringList files;
    if (source.kind != DataSource::Kind::Sql)
        files.append(QDir(place.folder).absoluteFilePath(source.location));
    else if (const auto database = SqlLocation::fromUrl(source.location, place.folder, told);
             database && database->kind == SqlLocation::Sqlite)
        files.append(database->database);
    if (!place.passwordFile.isEmpty())
        files.append(place.passwordFile);
    return files;
}

} // namespace

void addDataArguments(CLI::App &command, DataArguments &arguments)
{
    const OptionGroup group(command, "Data");
    command
        .add_option("--data", arguments.location,
            "The rows: a file of separated values (.csv, .tsv) or JSON (.json, .jsonl), - for standard "
            "input, "
            "a database (sqlite:FILE, postgresql://USER@HOST/DATABASE, odbc:DSN=NAME), or @ID for that "
            "source "
            "of the label; its only source, if that is a file, if not given")
        ->type_name("SOURCE")
        ->check(CommandLine::nameCheck());
    command
        .add_option("--query", arguments.query, "What a database is asked, for example SELECT * FROM labels")
        ->type_name("SQL")
        ->check(CommandLine::nameCheck());
    command
        .add_option("--password-file", arguments.passwordFile,
            "The file with the password of a database; otherwise PGPASSWORD or PGPASSFILE")
        ->type_name("FILE")
        ->check(CommandLine::nameCheck());
    command
        .add_option("--data-format", arguments.kind, "csv or json; as the file's ending tells if not given")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({ "csv", "json" }));
    command
        .add_option("--encoding", arguments.encoding,
            "Of separated values, for example windows-1252; UTF-8 or the byte order mark's if not given")
        ->type_name("NAME");
    command
        .add_option(
            "--delimiter", arguments.delimiter, "Between values: a character, or tab; found out if not given")
        ->type_name("C")
        ->check(CLI::Validator(
            [](const std::string &text) {
                return delimiterOf(text).size() == 1 ? std::string()
                                                     : "takes one character, or tab, not " + text;
            },
            ""));
}

DataRows openData(
    const DataArguments &arguments, const LabelDocument &label, const QString &labelPath, Problems &problems)
{
    const QString location = QFile::decodeName(arguments.location.c_str());
    const bool isOfLabel = location.isEmpty() || location.startsWith(u'@');
    const std::optional<DataSource> source = location.isEmpty() ? sourceOf(label, labelPath, problems)
        : isOfLabel ? sourceOf(label, labelPath, location, problems)
                    : typedSource(arguments, problems);
    if (!source)
        return {};
    RowSources::Place place { .folder = {},
        .mayLeaveFolder = !isOfLabel,
        .passwordFile = QFile::decodeName(arguments.passwordFile.c_str()) };
    if (isOfLabel)
        place.folder = QFileInfo(labelPath).absolutePath();
    return { RowSources::open(*source, place, problems), isOfLabel ? std::optional(source->id) : std::nullopt,
        filesOf(*source, place) };
}
