// SPDX-License-Identifier: BSD-3-Clause
#include "label/adjust/inkreplacement.h"

#include "label/wording.h"

#include <QStringList>

using namespace Qt::StringLiterals;

std::optional<QList<InkReplacement>> InkReplacement::parse(const QString &text, Problem &problem)
{
    QList<InkReplacement> replacements;
    for (const QString &pair : text.split(u',')) {
        const QStringList names = pair.split(u'=');
        if (names.size() != 2 || names[0].trimmed().isEmpty() || names[1].trimmed().isEmpty()) {
            problem = { {}, {}, Wording::quoted(pair) + u" names no two inks"_s,
                u"write the ink of the label and the one to print, for example red=black"_s };
            return {};
        }
        replacements.append({ names[0].trimmed(), names[1].trimmed() });
    }
    return replacements;
}

QString InkReplacement::text(const QList<InkReplacement> &replacements)
{
    QStringList pairs;
    for (const InkReplacement &replacement : replacements)
        pairs.append(replacement.ink + u'=' + replacement.with);
    return pairs.join(u',');
}
