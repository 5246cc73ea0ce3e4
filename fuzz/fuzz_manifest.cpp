// SPDX-License-Identifier: BSD-3-Clause
// Records of batches as they are found on a disk: entries are what their lines tell, and a batch goes on
// behind whatever the file holds, in a record that can be read again.
#include "fuzz/fuzzsupport.h"
#include "label/batch/manifest.h"
#include "label/batch/manifestshares.h"

#include <QTemporaryDir>

namespace {

void checkLine(const QByteArray &line)
{
    if (const std::optional<ManifestEntry> entry = ManifestEntry::fromLine(line)) {
        const std::optional<ManifestEntry> again = ManifestEntry::fromLine(entry->line());
        Fuzz::require(again && again->line() == entry->line());
    }
    if (const std::optional<Manifest::End> end = Manifest::endOfLine(line))
        Fuzz::require(Manifest::endOfLine(Manifest::endLine(*end)) == end);
}

void goOn(const QString &path, const QJsonObject &head)
{
    constexpr qint64 row = 2;
    const ManifestEntry entry { .row = row, .key = QStringLiteral("A"), .digest = "00", .isPrinted = true };
    Problems problems;
    {
        const std::unique_ptr<Manifest> manifest = Manifest::resume(path, head, problems);
        Fuzz::require(manifest != nullptr);
        (void)manifest->takeBehind(row);
        Fuzz::require(manifest->append(entry, problems));
        Fuzz::require(manifest->finish(Manifest::End { row, "00" }, problems));
    }
    const std::unique_ptr<Manifest> again = Manifest::resume(path, head, problems);
    Fuzz::require(again && again->find(row) == entry && !again->find(row + 1));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("manifest.jsonl"));
    const QByteArray content(reinterpret_cast<const char *>(data), qsizetype(size));
    QFile file(path);
    Fuzz::require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    file.close();
    for (const QByteArray &line : content.split('\n'))
        checkLine(line + '\n');
    Problems problems;
    Problems mergeProblems;
    const QString merged = folder.filePath(QStringLiteral("all.jsonl"));
    (void)ManifestShares::merge({ path }, merged, {}, mergeProblems);
    if (const std::optional<QJsonObject> head = Manifest::headOf(path, problems))
        goOn(path, *head);
    else
        Fuzz::require(!problems.isEmpty());
    return 0;
}
