// SPDX-License-Identifier: BSD-3-Clause
#include "label/inkrules.h"

#include "label/jsonpointer.h"
#include "label/labellimits.h"
#include "label/wording.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool isPlainColor(const QColor &color)
{
    return color == QColor(color.rgb());
}

bool isNameCharacter(QChar c)
{
    return c.isLetterOrNumber() || c == u' ' || c == u'.' || c == u'_' || c == u'-';
}

/// What is wrong with a name that becomes part of a file name; empty if nothing is.
QString nameProblem(const QString &name)
{
    if (name.isEmpty())
        return u"the ink has no name"_s;
    if (name.size() > LabelLimits::MaxInkNameLength)
        return u"%1 is longer than %2 characters"_s.arg(
            Wording::quoted(name), QString::number(LabelLimits::MaxInkNameLength));
    if (!std::ranges::all_of(name, isNameCharacter))
        return Wording::quoted(name) + u" holds a character that file names do not take everywhere"_s;
    if (name.startsWith(u'.') || name.startsWith(u'-') || name.trimmed() != name)
        return Wording::quoted(name)
            + u" begins or ends with a character that hides or changes a file's name"_s;
    return {};
}

class Check
{
public:
    Check(const QList<Ink> &inks, const QColor &paper)
        : m_inks(inks)
        , m_paper(paper)
    {
    }

    Problems problems()
    {
        if (!isPlainColor(m_paper))
            add(u"/paper"_s, u"the paper's colour is no opaque RGB colour"_s,
                u"use a colour like \"#ffffff\""_s);
        if (m_inks.isEmpty())
            add(u"/inks"_s, u"there is no ink to print in"_s, u"add an ink"_s);
        else if (m_inks.size() > LabelLimits::MaxInks)
            add(u"/inks"_s, u"there are more than %1 inks"_s.arg(LabelLimits::MaxInks), u"remove some"_s);
        for (qsizetype i = 0; i < std::min<qsizetype>(m_inks.size(), LabelLimits::MaxInks); ++i) {
            checkName(i);
            checkColor(i);
        }
        return m_problems;
    }

private:
    void add(const QString &where, const QString &what, const QString &advice)
    {
        m_problems.append({ {}, where, what, advice });
    }

    void checkName(qsizetype index)
    {
        const QString where = JsonPointer::element(u"/inks"_s, index) + u"/name"_s;
        const QString &name = m_inks[index].name;
        const QString problem = nameProblem(name);
        if (!problem.isEmpty())
            add(where, problem, u"use letters, digits, blanks and . _ - with a letter or digit first"_s);
        else if (isTaken(
                     index, [&](const Ink &ink) { return ink.name.compare(name, Qt::CaseInsensitive) == 0; }))
            add(where, u"another ink is named %1"_s.arg(Wording::quoted(name)), u"choose another name"_s);
    }

    void checkColor(qsizetype index)
    {
        const QString where = JsonPointer::element(u"/inks"_s, index) + u"/color"_s;
        const QColor color = m_inks[index].color;
        if (!isPlainColor(color))
            add(where, u"the ink's colour is no opaque RGB colour"_s, u"use a colour like \"#000000\""_s);
        else if (color == m_paper)
            add(where, u"%1 is the paper's colour"_s.arg(Wording::color(color)), u"choose another colour"_s);
        else if (isTaken(index, [&](const Ink &ink) { return ink.color == color; }))
            add(where, u"another ink is %1"_s.arg(Wording::color(color)), u"choose another colour"_s);
    }

    template <typename Same> [[nodiscard]] bool isTaken(qsizetype index, Same isSame) const
    {
        return std::any_of(m_inks.begin(), m_inks.begin() + index, isSame);
    }

    const QList<Ink> &m_inks;
    const QColor &m_paper;
    Problems m_problems;
};

} // namespace

Problems InkRules::problems(const QList<Ink> &inks, const QColor &paper)
{
    return Check(inks, paper).problems();
}
