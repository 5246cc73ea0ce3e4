// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/manifest.h"

#include "label/batch/partfile.h"
#include "label/outputfailure.h"

#include <QFileInfo>
#include <QJsonDocument>

#include <algorithm>
#include <array>
#include <cerrno>
#include <sys/file.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// More than the files of any row need.
constexpr qint64 longestLine = 64 * 1024 * 1024;
const QString versionKey = u"manifest"_s;
constexpr int version = 1;

const QString rowsKey = u"rows"_s;
const QString digestKey = u"digest"_s;
const QString moreKey = u"more"_s; ///< only where it is true
const QString pdfKey = u"pdf"_s; ///< of batches that are written as a whole

/// What the keys of a head mean, where they do not tell it themselves.
struct Meaning
{
    QLatin1StringView key;
    QLatin1StringView name;
};

constexpr std::array meanings {
    Meaning { "begin"_L1, "date (--date)"_L1 },
    Meaning { "copies"_L1, "column of copies (--copies-field)"_L1 },
    Meaning { "keep black"_L1, "choice of --keep-black"_L1 },
    Meaning { "key"_L1, "column of keys (--key)"_L1 },
    Meaning { "layers"_L1, "choice of layers (--layer)"_L1 },
    Meaning { "map"_L1, "replacement of inks (--map)"_L1 },
    Meaning { "mirror"_L1, "choice of --mirror"_L1 },
    Meaning { "negative"_L1, "choice of --negative"_L1 },
    Meaning { "overprint"_L1, "choice of --overprint"_L1 },
    Meaning { "pattern"_L1, "pattern of names (--output)"_L1 },
    Meaning { "pdf"_L1, "PDF (--pdf)"_L1 },
    Meaning { "sheet"_L1, "layout of sheets"_L1 },
};

QString meaningOf(const QString &key)
{
    const auto found = std::ranges::find(meanings, key, &Meaning::key);
    return found == meanings.end() ? key : QString(found->name);
}

QByteArray lineOf(const QJsonObject &json)
{
    return QJsonDocument(json).toJson(QJsonDocument::Compact) + '\n';
}

/// The next line, with its line feed; what is longer than any of ours, cut off. Qt would take the memory of
/// the longest for each.
QByteArray readLine(QFile &file)
{
    constexpr qint64 piece = 16 * 1024;
    QByteArray line;
    do
        line += file.readLine(piece);
    while (!line.endsWith('\n') && line.size() < longestLine && !file.atEnd());
    return line;
}

Problem unreadable(const QFile &file)
{
    return { file.fileName(), {}, u"cannot be read: "_s + file.errorString(), {} };
}

Problem unwritable(const QFileDevice &file)
{
    return OutputFailure::ofFile(file.fileName(), file.errorString());
}

/// Writes all of the data, or leaves the reason in errno. QFile would keep what a full disk has not taken,
/// and write it behind the end later.
bool writeAt(int file, QByteArrayView data, qint64 offset)
{
    while (!data.isEmpty()) {
        const ssize_t written = pwrite(file, data.data(), std::size_t(data.size()), offset);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        data = data.sliced(written);
        offset += written;
    }
    return true;
}

/// The first key that two heads do not have in common.
QString differenceOf(const QJsonObject &left, const QJsonObject &right)
{
    QStringList keys = left.keys() + right.keys();
    keys.sort();
    const auto found
        = std::ranges::find_if(keys, [&](const QString &key) { return left.value(key) != right.value(key); });
    return found == keys.end() ? QString() : *found;
}

} // namespace

QByteArray Manifest::headLine(const QJsonObject &head)
{
    QJsonObject json = head;
    json.insert(versionKey, version);
    return lineOf(json);
}

QByteArray Manifest::endLine(const End &end)
{
    QJsonObject json { { rowsKey, end.rows }, { digestKey, QString::fromLatin1(end.digest) } };
    if (!end.isWhole)
        json.insert(moreKey, true);
    return lineOf(json);
}

std::optional<QJsonObject> Manifest::headOfLine(const QByteArray &line)
{
    QJsonObject head = QJsonDocument::fromJson(line).object();
    return head.take(versionKey).toInt() == version ? std::optional(head) : std::nullopt;
}

std::optional<Manifest::End> Manifest::endOfLine(const QByteArray &line)
{
    const QJsonObject json = QJsonDocument::fromJson(line).object();
    const End end { json.value(rowsKey).toInteger(-1), json.value(digestKey).toString().toLatin1(),
        !json.value(moreKey).toBool() };
    return line.endsWith('\n') && end.rows >= 0 ? std::optional(end) : std::nullopt;
}

Manifest::Manifest(const QString &path)
    : m_file(path)
{
}

std::unique_ptr<Manifest> Manifest::create(
    const QString &path, const QJsonObject &head, bool overwrite, Problems &problems)
{
    std::unique_ptr<Manifest> manifest(new Manifest(path));
    if (!mayReplace(path, problems))
        return {};
    if (manifest->m_file.size() > 0 && !overwrite) {
        problems.append(inTheWay(path, !head.contains(pdfKey)));
        return {};
    }
    if (!manifest->open(problems))
        return {};
    if (!manifest->m_file.resize(0)) {
        problems.append(unwritable(manifest->m_file));
        return {};
    }
    return manifest->writeLine(headLine(head), problems) ? std::move(manifest) : nullptr;
}

Problem Manifest::inTheWay(const QString &path, bool canGoOn)
{
    return { path, {}, u"is there from an earlier batch"_s,
        canGoOn ? u"give --resume to go on with it, or --force to begin again"_s
                : u"give --force to begin again"_s };
}

bool Manifest::mayReplace(const QString &path, Problems &problems)
{
    const QFileInfo info(path);
    const bool isNothing = !info.exists() && !info.isSymLink();
    // A batch that was killed at its beginning has not come to its first line.
    const bool isEmpty = info.isFile() && info.size() == 0;
    Problems unread;
    if (isNothing || isEmpty || (info.isFile() && headOf(path, unread)))
        return true;
    problems.append({ path, {}, u"is no manifest of a batch, and stays as it is"_s,
        u"choose another name with --manifest"_s });
    return false;
}

std::optional<QJsonObject> Manifest::headOf(const QString &path, Problems &problems)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        problems.append(unreadable(file));
        return {};
    }
    if (std::optional<QJsonObject> head = headOfLine(readLine(file)))
        return head;
    problems.append({ path, u"line 1"_s, u"is no manifest of a batch"_s, {} });
    return {};
}

std::unique_ptr<Manifest> Manifest::resume(const QString &path, const QJsonObject &head, Problems &problems)
{
    if (QFileInfo(path).size() == 0) // of none, or of one that was killed before its first line
        return create(path, head, false, problems);
    const std::optional<QJsonObject> old = headOf(path, problems);
    if (!old)
        return {};
    if (const QString key = differenceOf(*old, head); !key.isEmpty()) {
        problems.append({ path, {}, u"the batch was begun with another "_s + meaningOf(key),
            u"resume it as it was begun, or give --force to begin again"_s });
        return {};
    }
    std::unique_ptr<Manifest> manifest(new Manifest(path));
    if (!manifest->open(problems))
        return {};
    manifest->readRows();
    return manifest;
}

bool Manifest::open(Problems &problems)
{
    if (!m_file.open(QIODevice::ReadWrite)) {
        problems.append(unwritable(m_file));
        return false;
    }
    if (flock(m_file.handle(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK)
        return true; // some file systems have no locks
    problems.append({ m_file.fileName(), {}, u"is being written by another process"_s,
        u"wait for its end, or stop it"_s });
    return false;
}

/// A line that a killed batch has not ended is cut off.
void Manifest::readRows()
{
    m_isResumed = true;
    m_headSize = readLine(m_file).size();
    qint64 end = m_headSize;
    while (!m_file.atEnd()) {
        const QByteArray line = readLine(m_file);
        const std::optional<ManifestEntry> entry = ManifestEntry::fromLine(line);
        if (!line.endsWith('\n') || !entry) {
            m_end = endOfLine(line);
            break;
        }
        m_isInOrder = m_isInOrder && entry->row > m_lastRow;
        m_lastRow = entry->row;
        m_offsets.insert(entry->row, end);
        end += line.size();
    }
    m_file.resize(end);
    m_file.seek(end);
}

QByteArray Manifest::lineAt(qint64 offset)
{
    m_file.seek(offset);
    return readLine(m_file);
}

std::optional<ManifestEntry> Manifest::find(qint64 row)
{
    const auto offset = m_offsets.constFind(row);
    return offset == m_offsets.cend() ? std::nullopt : ManifestEntry::fromLine(lineAt(*offset));
}

bool Manifest::writeLine(const QByteArray &line, Problems &problems)
{
    const qint64 offset = m_file.size();
    m_headSize = m_headSize == 0 ? line.size() : m_headSize;
    if (writeAt(m_file.handle(), line, offset))
        return true;
    problems.append(OutputFailure::ofFile(m_file.fileName(), qt_error_string(errno)));
    (void)!ftruncate(m_file.handle(), offset); // no half line, or one that is cut off when the batch goes on
    return false;
}

void Manifest::compare(const ManifestEntry &entry)
{
    if (!m_end || entry.row > m_end->rows)
        return;
    const std::optional<ManifestEntry> before = find(entry.row);
    if (!before || before->digest != entry.digest)
        m_end.reset();
}

bool Manifest::append(const ManifestEntry &entry, Problems &problems)
{
    compare(entry);
    m_isInOrder = m_isInOrder && entry.row > m_lastRow;
    m_lastRow = entry.row;
    if (m_isResumed)
        m_offsets.insert(entry.row, m_file.size());
    return writeLine(entry.line(), problems);
}

QList<ManifestEntry> Manifest::takeBehind(qint64 row)
{
    QList<ManifestEntry> taken;
    for (const qint64 behind : m_offsets.keys()) {
        if (behind <= row)
            continue;
        taken.append(*find(behind));
        m_offsets.remove(behind);
    }
    m_isInOrder = m_isInOrder && taken.isEmpty();
    return taken;
}

bool Manifest::finish(const std::optional<End> &end, Problems &problems)
{
    const bool isKnown = end && !end->isWhole && m_end && m_end->rows >= end->rows;
    const std::optional<End> &last = isKnown ? m_end : end;
    return (m_isInOrder || putInOrder(problems)) && (!last || writeLine(endLine(*last), problems));
}

void Manifest::remove()
{
    m_file.remove();
}

bool Manifest::putInOrder(Problems &problems)
{
    PartFile ordered(m_file.fileName());
    QList<qint64> rows = m_offsets.keys();
    std::ranges::sort(rows);
    bool isWritten = ordered.open() && m_file.seek(0) && ordered.write(m_file.read(m_headSize));
    for (const qint64 row : std::as_const(rows))
        isWritten = isWritten && ordered.write(lineAt(m_offsets.value(row)));
    if (isWritten && ordered.commit()) {
        // What follows goes into the new one.
        m_file.close();
        return open(problems);
    }
    problems.append(ordered.problem());
    return false;
}
