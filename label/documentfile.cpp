// SPDX-License-Identifier: BSD-3-Clause
#include "label/documentfile.h"

#include "items/core/item.h"
#include "label/binaryformat.h"
#include "label/itemmap.h"
#include "label/itemrecord.h"
#include "label/itemtree.h"
#include "label/jsonformat.h"
#include "label/jsonpointer.h"
#include "label/labellimits.h"
#include "label/outputfile.h"
#include "label/problemlog.h"
#include "label/wording.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString tooLarge(qint64 bytes)
{
    return u"is larger than %1 bytes (%2)"_s.arg(LabelLimits::MaxFileBytes).arg(bytes);
}

/// Why a path holds nothing to read; empty for an ordinary file of a bearable size.
QString obstacle(const QFileInfo &info)
{
    if (!info.exists())
        return u"does not exist"_s;
    if (info.isDir())
        return u"is a folder"_s;
    // A pipe or a device could keep the reader waiting, or never end.
    if (!info.isFile())
        return u"is no ordinary file"_s;
    return info.size() > LabelLimits::MaxFileBytes ? tooLarge(info.size()) : QString();
}

LoadResult refused(const QString &fileName, const QString &what, const QString &advice = {})
{
    return { {}, { { fileName, {}, what, advice } } };
}

bool looksLikeJson(const QByteArray &data)
{
    constexpr QByteArrayView byteOrderMark("\xEF\xBB\xBF");
    const QByteArrayView text
        = QByteArrayView(data).sliced(data.startsWith(byteOrderMark) ? byteOrderMark.size() : 0);
    const QByteArrayView rest = text.trimmed();
    return rest.startsWith('{') || rest.startsWith('[');
}

/// Logs an item that is not what it was, or those in it.
void compare(Item &item, Item &again, const QString &pointer, ProblemLog &log)
{
    const QList<Item *> members = ItemTree::membersOf(item);
    const QList<Item *> membersAgain = ItemTree::membersOf(again);
    if (ItemRecord::comparable(item) != ItemRecord::comparable(again)
        || members.size() != membersAgain.size())
        log.add(
            pointer, u"the JSON form cannot hold all of %1"_s.arg(Wording::item(item)), u"save it as .vxb"_s);
    const QString children = JsonPointer::member(pointer, ItemMap::childrenKey);
    for (qsizetype i = 0; i < std::min(members.size(), membersAgain.size()); ++i)
        compare(*members[i], *membersAgain[i], JsonPointer::element(children, i), log);
}

/// The items that are not what they were once the text is read again.
Problems losses(const LabelDocument &document, const QByteArray &json)
{
    const LoadResult again = JsonFormat::read(json, {}, BrokenItems::Refuse);
    if (!again.document)
        return again.problems;
    ProblemLog log({});
    for (std::size_t i = 0; i < document.items().size(); ++i)
        compare(*document.items()[i], *again.document->items()[i],
            JsonPointer::element(u"/items"_s, qsizetype(i)), log);
    return log.problems();
}

} // namespace

LoadResult DocumentFile::load(const QString &path, BrokenItems broken)
{
    const QString reason = obstacle(QFileInfo(path));
    if (!reason.isEmpty())
        return refused(path, reason);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return refused(path, u"cannot be read: "_s + file.errorString());
    // The file may have grown since.
    const QByteArray data = file.read(LabelLimits::MaxFileBytes + 1);
    if (file.error() != QFileDevice::NoError)
        return refused(path, u"cannot be read: "_s + file.errorString());
    return loadFromData(data, path, broken);
}

LoadResult DocumentFile::loadFromData(const QByteArray &data, const QString &fileName, BrokenItems broken)
{
    if (data.isEmpty())
        return refused(fileName, u"is empty"_s);
    if (data.size() > LabelLimits::MaxFileBytes)
        return refused(fileName, tooLarge(data.size()));
    if (BinaryFormat::hasMagic(data))
        return BinaryFormat::read(data, fileName, broken);
    if (looksLikeJson(data))
        return JsonFormat::read(data, fileName, broken);
    return refused(fileName, u"is no label document"_s, u"open a .vxl or .vxb file"_s);
}

std::optional<DocumentFormat> DocumentFile::formatOf(const QString &path)
{
    const QString suffix = QFileInfo(path).suffix();
    if (suffix.compare("vxb"_L1, Qt::CaseInsensitive) == 0)
        return DocumentFormat::Binary;
    if (suffix.compare("vxl"_L1, Qt::CaseInsensitive) == 0)
        return DocumentFormat::Json;
    return {};
}

QByteArray DocumentFile::toData(const LabelDocument &document, DocumentFormat format, Problems &problems)
{
    Problems found = document.problems();
    QByteArray data;
    if (found.isEmpty()) {
        data = format == DocumentFormat::Json ? JsonFormat::write(document) : BinaryFormat::write(document);
        if (data.size() > LabelLimits::MaxFileBytes)
            found.append({ {}, {}, tooLarge(data.size()), u"use fewer or smaller items"_s });
        else if (format == DocumentFormat::Json)
            found = losses(document, data);
    }
    problems += found;
    return found.isEmpty() ? data : QByteArray();
}

bool DocumentFile::save(
    const LabelDocument &document, const QString &path, bool overwrite, Problems &problems)
{
    const std::optional<DocumentFormat> format = formatOf(path);
    if (!format) {
        problems.append({ path, {}, u"is no name of a document"_s, u"let it end in .vxl or .vxb"_s });
        return false;
    }
    Problems found;
    const QByteArray data = toData(document, *format, found);
    for (Problem &problem : found)
        problem.file = path;
    problems += found;
    return found.isEmpty() && OutputFile::write(path, data, overwrite, problems);
}
