// SPDX-License-Identifier: BSD-3-Clause
#include "label/jsonformat.h"

#include "label/canonicaljson.h"
#include "label/data/datasourcemap.h"
#include "label/itemmap.h"
#include "label/jsonreader.h"
#include "label/jsonscan.h"
#include "label/problemlog.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace {

QJsonObject pageOf(const LabelDocument &document)
{
    return { { u"width"_s, document.pageSize().width() }, { u"height"_s, document.pageSize().height() },
        { u"dpi"_s, document.designDpi() } };
}

QJsonArray inksOf(const LabelDocument &document)
{
    QJsonArray inks;
    for (const Ink &ink : document.inks())
        inks.append(QJsonObject { { u"name"_s, ink.name }, { u"color"_s, ink.color.name() } });
    return inks;
}

QJsonArray itemsOf(const LabelDocument &document)
{
    QJsonArray items;
    for (const auto &item : document.items())
        items.append(ItemMap::toJson(*item));
    return items;
}

} // namespace

QByteArray JsonFormat::write(const LabelDocument &document)
{
    QJsonObject root { { u"format"_s, JsonReader::formatName },
        { u"version"_s, int(document.CurrentVersion) }, { u"page"_s, pageOf(document) },
        { u"inks"_s, inksOf(document) }, { u"paper"_s, document.paper().name() },
        { u"items"_s, itemsOf(document) } };
    if (document.dither() != Dither::Diffusion)
        root[u"dither"_s] = DitherNames::of(document.dither());
    if (!document.sources().isEmpty())
        root[u"sources"_s] = DataSourceMap::toJson(document.sources());
    return CanonicalJson::write(root);
}

LoadResult JsonFormat::read(const QByteArray &data, const QString &fileName, BrokenItems broken)
{
    ProblemLog log(fileName);
    LoadResult result;
    if (const std::optional<QJsonObject> root = JsonScan::parseObject(data, log))
        result.document = JsonReader(*root, broken, log).read();
    result.problems = log.problems();
    return result;
}
