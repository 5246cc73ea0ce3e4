// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/manifestshares.h"

#include "label/batch/manifest.h"
#include "label/batch/manifestlines.h"
#include "label/batch/partfile.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <map>

using namespace Qt::StringLiterals;

namespace {

using Parts = std::vector<std::unique_ptr<ManifestLines>>;

/// As many as a person reads.
constexpr qsizetype mostRowsNamed = 10;

QString ending(const QFileInfo &manifest)
{
    return manifest.suffix().isEmpty() ? QString() : u'.' + manifest.suffix();
}

/// Opens manifests of one batch.
std::optional<Parts> opened(const QStringList &paths, Problems &problems)
{
    Parts parts;
    const qsizetype before = problems.size();
    for (const QString &path : paths) {
        std::unique_ptr<ManifestLines> part = ManifestLines::open(path, problems);
        if (part && !parts.empty() && part->head() != parts.front()->head())
            problems.append({ path, {}, u"is of another batch than "_s + parts.front()->path(),
                u"use manifests of one label, printed with the same arguments"_s });
        if (part)
            parts.push_back(std::move(part));
    }
    return problems.size() == before ? std::optional(std::move(parts)) : std::nullopt;
}

/// That all shares are there, each once and at its end, in their order.
Problems problemsOf(const Parts &parts)
{
    Problems problems;
    const int count = parts.front()->shard().count;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const ManifestLines &part = *parts[i];
        const QString share = u"share %1/%2"_s.arg(part.shard().index).arg(part.shard().count);
        if (part.shard().count != count)
            problems.append(
                { part.path(), {}, u"belongs to %1, and others to one of %2"_s.arg(share).arg(count), {} });
        else if (i > 0 && part.shard() == parts[i - 1]->shard())
            problems.append(
                { part.path(), {}, u"belongs to %1, as does %2"_s.arg(share, parts[i - 1]->path()), {} });
        else if (!part.end())
            problems.append({ part.path(), {}, u"is of a batch that has not come to its end"_s,
                u"run %1 again with --resume"_s.arg(share) });
        else if (parts.front()->end() && part.end() != parts.front()->end())
            problems.append({ part.path(), {}, u"is of other data than "_s + parts.front()->path(),
                u"print all shares of the same rows in the same order"_s });
    }
    for (int index = 0; index < count && problems.isEmpty(); ++index) {
        if (std::size_t(index) >= parts.size() || parts[std::size_t(index)]->shard().index != index)
            problems.append({ {}, {}, u"share %1/%2 is missing"_s.arg(index).arg(count), {} });
    }
    return problems;
}

/// The lines of all parts by their rows. Rows that are there twice or in a wrong share are problems.
std::map<qint64, QByteArrayView> linesOf(const Parts &parts, Problems &problems)
{
    std::map<qint64, QByteArrayView> lines;
    for (const std::unique_ptr<ManifestLines> &part : parts) {
        for (const ManifestLines::Line &line : part->lines()) {
            const QString where = u"row %1"_s.arg(line.row);
            if (!part->shard().contains(line.row))
                problems.append({ part->path(), where, u"belongs to another share"_s, {} });
            else if (!lines.emplace(line.row, line.text).second)
                problems.append({ part->path(), where, u"is there twice"_s, {} });
        }
    }
    return lines;
}

void checkRows(const std::map<qint64, QByteArrayView> &lines, qint64 rows, const RowSelection &selection,
    Problems &problems)
{
    QStringList missing;
    qint64 count = 0;
    for (qint64 row = 1; row <= rows; ++row) {
        if (!selection.contains(row) || lines.contains(row))
            continue;
        ++count;
        if (missing.size() < mostRowsNamed)
            missing.append(QString::number(row));
    }
    if (count > 0)
        problems.append({ {}, {},
            u"%1 of %2 rows are missing: %3%4"_s.arg(count)
                .arg(selection.countOf(rows))
                .arg(missing.join(u", "_s), count > missing.size() ? u" …"_s : QString()),
            u"print them with --resume"_s });
}

/// Whether the shares have read as far as the rows that were to be printed.
void checkEnd(const Manifest::End &end, const RowSelection &selection, Problems &problems)
{
    if (end.isWhole || selection.endsBefore(end.rows + 1))
        return;
    problems.append({ {}, {}, u"no share has read more than %1 rows of the data"_s.arg(end.rows),
        u"print the others with --resume, or give --rows as the batch had it"_s });
}

bool write(const QString &path, const QByteArrayList &pieces, Problems &problems)
{
    PartFile file(path);
    const bool isWritten = file.open()
        && std::ranges::all_of(pieces, [&](const QByteArray &piece) { return file.write(piece); });
    if (isWritten && file.commit())
        return true;
    problems.append(file.problem());
    return false;
}

QByteArray bytesOf(QByteArrayView text)
{
    return QByteArray::fromRawData(text.data(), text.size());
}

} // namespace

QString ManifestShares::pathOf(const QString &manifest, Shard shard)
{
    if (shard == Shard())
        return manifest;
    const QFileInfo info(manifest);
    return info.dir().filePath(
        u"%1.%2-of-%3%4"_s.arg(info.completeBaseName()).arg(shard.index).arg(shard.count).arg(ending(info)));
}

QStringList ManifestShares::existing(const QString &manifest)
{
    const QFileInfo info(manifest);
    const QRegularExpression name(u"\\A%1(\\.[0-9]+-of-[0-9]+)?%2\\z"_s.arg(
        QRegularExpression::escape(info.completeBaseName()), QRegularExpression::escape(ending(info))));
    QStringList paths;
    for (const QString &file : info.dir().entryList(QDir::Files | QDir::Hidden)) {
        const QString path = info.dir().filePath(file);
        if (name.match(file).hasMatch() && QFileInfo(path).size() > 0)
            paths.append(path);
    }
    return paths;
}

namespace {

/// Records name their files from their own folder on.
Problems problemsOfFolder(const QStringList &paths, const QString &manifest)
{
    const auto isElsewhere = [&](const QString &path) {
        return QFileInfo(path).absolutePath() != QFileInfo(manifest).absolutePath();
    };
    const auto found = std::ranges::find_if(paths, isElsewhere);
    if (found == paths.end())
        return {};
    return { { manifest, {}, u"lies in another folder than "_s + *found,
        u"put it there: that is where its records name their files from"_s } };
}

} // namespace

std::optional<ManifestShares::Merged> ManifestShares::merge(
    const QStringList &paths, const QString &manifest, const RowSelection &rows, Problems &problems)
{
    std::optional<Parts> parts = opened(paths, problems);
    if (!parts || parts->empty())
        return {};
    std::ranges::sort(*parts, {}, [](const auto &part) { return part->shard().index; });
    Problems found = problemsOf(*parts);
    std::map<qint64, QByteArrayView> lines;
    if (found.isEmpty()) {
        lines = linesOf(*parts, found);
        checkRows(lines, parts->front()->end()->rows, rows, found);
        checkEnd(*parts->front()->end(), rows, found);
    }
    if (found.isEmpty())
        found = problemsOfFolder(paths, manifest);
    if (!found.isEmpty()) {
        problems += found;
        return {};
    }
    Merged merged;
    QByteArrayList pieces { Manifest::headLine(parts->front()->head()) };
    for (const auto &[row, line] : lines) {
        pieces.append(bytesOf(line));
        ++(ManifestEntry::fromLine(pieces.last())->isPrinted ? merged.printed : merged.failed);
    }
    pieces.append(Manifest::endLine(*parts->front()->end()));
    return write(manifest, pieces, problems) ? std::optional(merged) : std::nullopt;
}

bool ManifestShares::rearrange(const QString &manifest, int count, Problems &problems)
{
    QStringList before = existing(manifest);
    std::optional<Parts> parts = opened(before, problems);
    if (!parts)
        return false;
    if (parts->empty())
        return true;
    const bool isSo
        = std::ranges::all_of(*parts, [&](const auto &part) { return part->shard().count == count; });
    if (isSo)
        return true;
    // Of a row on two records, the younger one is that of a share: the whole one is only there before and
    // after.
    std::map<qint64, QByteArrayView> lines;
    std::ranges::sort(*parts, {}, [](const auto &part) { return part->shard().count; });
    for (const std::unique_ptr<ManifestLines> &part : *parts) {
        for (const ManifestLines::Line &line : part->lines())
            lines[line.row] = line.text;
    }
    std::vector<QByteArrayList> pieces;
    for (int index = 0; index < count; ++index) {
        QJsonObject head = parts->front()->head();
        if (count > 1)
            head.insert(u"shard"_s, u"%1/%2"_s.arg(index).arg(count));
        pieces.push_back({ Manifest::headLine(head) });
    }
    for (const auto &[row, line] : lines)
        pieces[std::size_t(row % count)].append(bytesOf(line));
    for (int index = 0; index < count; ++index) {
        const QString path = pathOf(manifest, { index, count });
        before.removeAll(path);
        if (!write(path, pieces[std::size_t(index)], problems))
            return false;
    }
    for (const QString &path : std::as_const(before))
        QFile::remove(path);
    return true;
}
