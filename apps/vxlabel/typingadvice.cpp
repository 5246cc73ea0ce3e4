// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/typingadvice.h"

#include "apps/vxlabel/commandtree.h"
#include "label/nearestname.h"

#include <CLI/CLI.hpp>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype shortestBeginning = 3;

/// The only word that begins so. Empty if there is none, or several.
QString completed(const QString &beginning, const QStringList &words)
{
    if (QString(beginning).remove(u'-').size() < shortestBeginning)
        return {};
    QStringList found;
    for (const QString &word : words) {
        if (word.startsWith(beginning, Qt::CaseInsensitive))
            found.append(word);
    }
    return found.size() == 1 ? found[0] : QString();
}

/// "png or pbm", "diffusion, ordered or threshold"
QString listed(QStringList values)
{
    const QString last = values.takeLast();
    return values.isEmpty() ? last : values.join(u", "_s) + u" or "_s + last;
}

void adviseOn(CLI::Option &option)
{
    QStringList values;
    for (const std::string &value : CommandTree::valuesOf(option))
        values.append(QString::fromStdString(value));
    if (values.isEmpty())
        return;
    const std::string name = option.get_name();
    const auto refuse = [values, name](const std::string &text) -> std::string {
        const QString given = QString::fromStdString(text);
        if (values.contains(given))
            return {};
        const QString what = u": takes %1, not %2"_s.arg(listed(values), given);
        throw MistypedValue(name + what.toStdString(), TypingAdvice::meant(given, values));
    };
    // In front of the option's own check, which knows no advice.
    CLI::Validator check([refuse](std::string &text) { return refuse(text); }, "");
    option.transform(check.non_modifying());
}

} // namespace

QString TypingAdvice::meant(const QString &mistyped, const QStringList &words)
{
    bool isNumber = false;
    static_cast<void>(mistyped.toDouble(&isNumber));
    if (isNumber) // another one is no likelier than the rest
        return {};
    const QString longer = completed(mistyped, words);
    const QString word = longer.isEmpty() ? nearestName(mistyped, words) : longer;
    return word.isEmpty() ? QString() : u"did you mean \"%1\"?"_s.arg(word);
}

void TypingAdvice::adviseOnValues(CLI::App &program)
{
    for (CLI::Option *option : program.get_options({}))
        adviseOn(*option);
    for (CLI::App *command : program.get_subcommands({}))
        adviseOnValues(*command);
}
