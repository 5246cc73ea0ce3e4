// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/jsonreport.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

QByteArray lineOf(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

} // namespace

void JsonReport::tellLabel(const Findings &findings)
{
    for (const Finding &finding : findings)
        tell(finding, {});
}

void JsonReport::tellRow(const Row &row, const Findings &findings)
{
    for (const Finding &finding : findings)
        tell(finding, row.number);
}

void JsonReport::tell(const Finding &finding, std::optional<qint64> row)
{
    const Problem &problem = finding.problem;
    QJsonObject object { { u"severity"_s, nameOf(finding.severity) }, { u"rule"_s, finding.rule },
        { u"file"_s, problem.file }, { u"what"_s, problem.what } };
    if (row)
        object.insert(u"row"_s, *row);
    if (!problem.where.isEmpty())
        object.insert(u"where"_s, problem.where);
    if (!problem.advice.isEmpty())
        object.insert(u"advice"_s, problem.advice);
    print(lineOf(object));
}

bool JsonReport::finish()
{
    print(lineOf({ { u"rows"_s, count().rows }, { u"errors"_s, count().errors },
        { u"warnings"_s, count().warnings } }));
    return isPrinted();
}
