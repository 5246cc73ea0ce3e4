// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/datasource.h"

#include "label/data/numberform.h"
#include "label/jsonpointer.h"
#include "label/labellimits.h"
#include "label/problemlog.h"
#include "label/wording.h"

#include <QSet>
#include <QUrl>

#include <algorithm>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

/// Numbers up to this have all their digits in JSON.
constexpr qint64 largestNumber = 9'007'199'254'740'991;
/// About a hundred years.
constexpr int mostDays = 36'500;

/// The texts of a source, with their keys.
struct Member
{
    QString key;
    const QString &text;
};

class Check
{
public:
    Check(const DataSource &source, const QString &pointer, ProblemLog &log)
        : m_source(source)
        , m_pointer(pointer)
        , m_log(log)
    {
    }

    void run()
    {
        if (m_source.id < 0)
            add(u"id"_s, u"%1 is no number of a source"_s.arg(m_source.id), u"use 0 or more"_s);
        for (const Member &member : { Member { u"location"_s, m_source.location },
                 { u"query"_s, m_source.query }, { u"text"_s, m_source.text }, { u"form"_s, m_source.form } })
            checkLength(member);
        checkRows();
        checkFunction();
    }

private:
    void add(const QString &key, const QString &what, const QString &advice)
    {
        m_log.add(JsonPointer::member(m_pointer, key), what, advice);
    }

    void checkLength(const Member &member)
    {
        if (member.text.size() > LabelLimits::MaxSourceText)
            add(member.key, u"%1 characters"_s.arg(member.text.size()),
                u"use at most %1"_s.arg(LabelLimits::MaxSourceText));
    }

    void checkRows()
    {
        if (m_source.isFunction())
            return;
        if (m_source.location.isEmpty())
            add(u"location"_s, u"is empty"_s, u"name the file, or the URL of the database"_s);
        if (m_source.kind == DataSource::Kind::Sql && m_source.query.isEmpty())
            add(u"query"_s, u"is empty"_s, u"for example SELECT * FROM labels"_s);
        if (!QUrl(m_source.location).password().isEmpty())
            add(u"location"_s, u"holds a password"_s,
                u"take it out: whoever prints gives it by the environment or a file"_s);
        const bool isOneByte = m_source.delimiter.size() == 1 && m_source.delimiter[0].unicode() < 0x80;
        if (!m_source.delimiter.isEmpty() && !isOneByte)
            add(u"delimiter"_s, Wording::quoted(m_source.delimiter) + u" is no delimiter"_s,
                u"use one character of ASCII"_s);
    }

    void checkFunction()
    {
        if (m_source.kind == DataSource::Kind::Concatenation && m_source.text.isEmpty())
            add(u"text"_s, u"is empty"_s, u"for example ${sku}-${lot}"_s);
        if (m_source.kind == DataSource::Kind::Counter && !m_source.form.isEmpty()
            && !NumberForm::isValid(m_source.form))
            add(u"form"_s, Wording::quoted(m_source.form) + u" is no form of a number"_s,
                u"for example %05d"_s);
        checkNumber(u"start"_s, m_source.start);
        checkNumber(u"step"_s, m_source.step);
        if (std::abs(m_source.days) > mostDays)
            add(u"days"_s, u"%1 is out of range"_s.arg(m_source.days),
                u"use a number from -%1 to %1"_s.arg(mostDays));
    }

    void checkNumber(const QString &key, qint64 number)
    {
        if (number > largestNumber || number < -largestNumber)
            add(key, u"%1 is out of range"_s.arg(number),
                u"use a whole number from -%1 to %1"_s.arg(largestNumber));
    }

    const DataSource &m_source;
    QString m_pointer;
    ProblemLog &m_log;
};

} // namespace

Problems DataSources::problems(const QList<DataSource> &sources)
{
    ProblemLog log({});
    if (sources.size() > LabelLimits::MaxSources)
        log.add(u"/sources"_s, u"%1 sources"_s.arg(sources.size()),
            u"a label has at most %1"_s.arg(LabelLimits::MaxSources));
    QSet<int> ids;
    for (qsizetype i = 0; i < sources.size(); ++i) {
        const QString pointer = JsonPointer::element(u"/sources"_s, i);
        if (ids.contains(sources[i].id))
            log.add(pointer + u"/id"_s, u"%1 is the id of another source, too"_s.arg(sources[i].id),
                u"use one of its own"_s);
        ids.insert(sources[i].id);
        Check(sources[i], pointer, log).run();
    }
    return log.problems();
}

const DataSource *DataSources::find(const QList<DataSource> &sources, int id)
{
    const auto found
        = std::ranges::find_if(sources, [id](const DataSource &source) { return source.id == id; });
    return found == sources.end() ? nullptr : &*found;
}
