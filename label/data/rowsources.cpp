// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/rowsources.h"

#include "label/data/assetpaths.h"
#include "label/data/csvsource.h"
#include "label/data/jsonrows.h"
#include "label/data/sqlsource.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

/// The file of a source. Nothing, with the reason in problems, if it must not be read.
std::optional<QString> fileOf(const DataSource &source, const RowSources::Place &place, Problems &problems)
{
    if (place.mayLeaveFolder)
        return source.location == u"-" || place.folder.isEmpty()
            ? source.location
            : QDir(place.folder).filePath(source.location);
    Problem problem;
    std::optional<QString> file = AssetPaths({ place.folder }).find(source.location, problem);
    if (!file)
        problems.append({ source.location, {}, u"cannot be read: "_s + problem.what,
            u"keep the data in the folder of the label, or give --data"_s });
    return file;
}

std::unique_ptr<RowSource> openDatabase(
    const DataSource &source, const RowSources::Place &place, Problems &problems)
{
    const QString folder = place.folder.isEmpty() ? QDir::currentPath() : place.folder;
    const std::optional<SqlLocation> location = SqlLocation::fromUrl(source.location, folder, problems);
    if (!location)
        return {};
    return SqlSource::open(*location, source.query, { .passwordFile = place.passwordFile }, problems);
}

} // namespace

DataSource::Kind RowSources::kindOf(const QString &location)
{
    if (SqlLocation::isUrl(location))
        return DataSource::Kind::Sql;
    const QString ending = QFileInfo(location).suffix().toLower();
    const bool isJson = ending == u"json" || ending == u"jsonl" || ending == u"ndjson";
    return isJson ? DataSource::Kind::Json : DataSource::Kind::Csv;
}

std::unique_ptr<RowSource> RowSources::open(const DataSource &source, const Place &place, Problems &problems)
{
    if (source.kind == DataSource::Kind::Sql)
        return openDatabase(source, place, problems);
    const std::optional<QString> file = fileOf(source, place, problems);
    DataInput input = file ? DataInput::open(*file, problems) : DataInput();
    if (!input.device)
        return {};
    if (source.kind == DataSource::Kind::Json)
        return JsonRows::open(std::move(input), problems);
    const char delimiter = source.delimiter.isEmpty() ? '\0' : source.delimiter[0].toLatin1();
    return CsvSource::open(std::move(input), { source.encoding.toLatin1(), delimiter }, problems);
}
