// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/mergecommand.h"

#include "apps/vxlabel/commandline.h"
#include "apps/vxlabel/terminal.h"
#include "label/batch/manifestshares.h"

#include <QFile>
#include <QFileInfo>

#include <CLI/CLI.hpp>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

struct Arguments
{
    std::vector<std::string> parts;
    std::string output;
    RowSelection rows;
    bool force = false;
};

ExitCode merge(const Arguments &arguments)
{
    const QString output = QFile::decodeName(arguments.output.c_str());
    if (QFileInfo::exists(output) && !arguments.force) {
        Terminal::complain({ output, {}, u"exists already"_s, u"give --force to replace it"_s });
        return ExitCode::CannotWrite;
    }
    QStringList parts;
    for (const std::string &part : arguments.parts)
        parts.append(QFile::decodeName(part.c_str()));
    Problems problems;
    const std::optional<ManifestShares::Merged> merged
        = ManifestShares::merge(parts, output, arguments.rows, problems);
    Terminal::complain(problems, output);
    if (!merged)
        return ExitCode::BadDocument;
    const QString failed = merged->failed > 0 ? u", %1 failed"_s.arg(merged->failed) : QString();
    if (!Terminal::print((u"%1 rows printed"_s.arg(merged->printed) + failed + u'\n').toUtf8()))
        return ExitCode::CannotWrite;
    return merged->failed > 0 ? ExitCode::SomeFailed : ExitCode::Ok;
}

} // namespace

void addMergeCommand(CommandLine &commandLine)
{
    const auto arguments = std::make_shared<Arguments>();
    CLI::App &command = commandLine.addCommand("merge",
        "Make one manifest of those of all shares of a batch, and check that every row is there once",
        "vxlabel merge out/manifest.*-of-4.jsonl -o out/manifest.jsonl",
        [arguments](BrokenItems) { return merge(*arguments); });
    command.add_option("MANIFEST", arguments->parts, "The manifests of the shares")->required();
    CommandLine::addPath(command, "-o,--output", "FILE", "The manifest of the whole", arguments->output);
    CommandLine::addRows(command, arguments->rows, "The rows that were to be printed; all if not given");
    CommandLine::addForce(command, arguments->force);
}
