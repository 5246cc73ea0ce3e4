// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/manifestentry.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

const QString printed = u"printed"_s;
const QString failed = u"failed"_s;

} // namespace

void ManifestEntry::addPages(qint64 first, qint64 last)
{
    pages = Pages { pages ? pages->first : first, last };
}

QByteArray ManifestEntry::line() const
{
    QJsonObject json { { u"row"_s, row }, { u"key"_s, key }, { u"digest"_s, QString::fromLatin1(digest) },
        { u"status"_s, isPrinted ? printed : failed } };
    if (isPrinted) {
        QJsonArray fileList;
        for (const File &file : files)
            fileList.append(
                QJsonObject { { u"name"_s, file.name }, { u"sha256"_s, QString::fromLatin1(file.sha256) } });
        QJsonArray inkList;
        for (const InkUse &ink : inks)
            inkList.append(QJsonObject {
                { u"name"_s, ink.name }, { u"dots"_s, ink.dots }, { u"coverage"_s, ink.coverage } });
        json.insert(u"copies"_s, copies);
        if (pages)
            json.insert(u"pages"_s, QJsonObject { { u"first"_s, pages->first }, { u"last"_s, pages->last } });
        else
            json.insert(u"files"_s, fileList);
        if (cell > 0)
            json.insert(u"cell"_s, cell);
        json.insert(u"inks"_s, inkList);
    } else {
        json.insert(u"problems"_s, QJsonArray::fromStringList(problems));
    }
    return QJsonDocument(json).toJson(QJsonDocument::Compact) + '\n';
}

std::optional<ManifestEntry> ManifestEntry::fromLine(const QByteArray &line)
{
    const QJsonObject json = QJsonDocument::fromJson(line).object();
    ManifestEntry entry;
    entry.row = json.value(u"row"_s).toInteger();
    const QString status = json.value(u"status"_s).toString();
    if (entry.row < 1 || (status != printed && status != failed))
        return {};
    entry.key = json.value(u"key"_s).toString();
    entry.digest = json.value(u"digest"_s).toString().toLatin1();
    entry.isPrinted = status == printed;
    entry.copies = json.value(u"copies"_s).toInteger(1);
    for (const QJsonValue file : json.value(u"files"_s).toArray())
        entry.files.append({ file.toObject().value(u"name"_s).toString(),
            file.toObject().value(u"sha256"_s).toString().toLatin1() });
    if (const QJsonObject pages = json.value(u"pages"_s).toObject(); !pages.isEmpty())
        entry.addPages(pages.value(u"first"_s).toInteger(), pages.value(u"last"_s).toInteger());
    entry.cell = json.value(u"cell"_s).toInt();
    for (const QJsonValue ink : json.value(u"inks"_s).toArray()) {
        const QJsonObject use = ink.toObject();
        entry.inks.append({ use.value(u"name"_s).toString(), use.value(u"dots"_s).toInteger(),
            use.value(u"coverage"_s).toDouble() });
    }
    for (const QJsonValue problem : json.value(u"problems"_s).toArray())
        entry.problems.append(problem.toString());
    return entry;
}
