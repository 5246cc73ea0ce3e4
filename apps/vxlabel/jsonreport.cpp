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
        tell(finding, nullptr);
}

void JsonReport::tellRow(const CheckedRow &row)
{
    for (const Finding &finding : row.findings)
        tell(finding, &row);
}

void JsonReport::tell(const Finding &finding, const CheckedRow *row)
{
    if (isRepeating())
        return;
    const Problem &problem = finding.problem;
    const QString file = problem.file.isEmpty() ? labelPath() : problem.file;
    QJsonObject object { { u"severity"_s, nameOf(finding.severity) }, { u"rule"_s, finding.rule },
        { u"file"_s, file }, { u"what"_s, problem.what } };
    if (row) {
        object.insert(u"row"_s, row->row.number);
        object.insert(u"address"_s, row->row.address);
        if (!row->key.isEmpty())
            object.insert(u"key"_s, row->key);
    }
    if (!problem.where.isEmpty())
        object.insert(u"where"_s, problem.where);
    if (!problem.advice.isEmpty())
        object.insert(u"advice"_s, problem.advice);
    print(lineOf(object));
}

void JsonReport::tellRest()
{
    print(lineOf({ { u"rows"_s, count().rows }, { u"errors"_s, count().errors },
        { u"warnings"_s, count().warnings } }));
}
