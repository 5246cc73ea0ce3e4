// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/checkcommand.h"

#include "apps/vxlabel/assetarguments.h"
#include "apps/vxlabel/commandline.h"
#include "apps/vxlabel/dataarguments.h"
#include "apps/vxlabel/interruption.h"
#include "apps/vxlabel/jsonreport.h"
#include "apps/vxlabel/junitreport.h"
#include "apps/vxlabel/optiongroup.h"
#include "apps/vxlabel/planarguments.h"
#include "apps/vxlabel/textreport.h"
#include "apps/vxlabel/worker.h"

#include <QFile>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

struct Arguments
{
    std::string label;
    DataArguments data;
    AssetArguments assets;
    std::optional<double> dpi;
    std::string pattern;
    std::optional<BatchOptions::Format> format;
    bool strict = false;
    bool json = false;
    bool junit = false;
    std::optional<Progress::Form> progress;
    BatchOptions batch; ///< that would be printed
};

qint64 lastOf(const QHash<qint64, Problem> &rows)
{
    const QList<qint64> numbers = rows.keys();
    return numbers.isEmpty() ? 0 : *std::ranges::max_element(numbers);
}

std::unique_ptr<CheckReport> reportOf(const Arguments &arguments, const QString &labelPath)
{
    const CheckReport::Options options { labelPath, arguments.strict,
        arguments.progress.value_or(Progress::usualForm()), lastOf(arguments.batch.lostRows) };
    if (arguments.json)
        return std::make_unique<JsonReport>(options);
    if (arguments.junit)
        return std::make_unique<JunitReport>(options);
    return std::make_unique<TextReport>(options);
}

Findings errorsOf(const Problems &problems, const char *rule)
{
    Findings findings;
    for (const Problem &problem : problems)
        findings.append({ Finding::Error, QLatin1String(rule), problem });
    return findings;
}

/// Whether rows belong to the label: those that are given, or those that it names itself.
bool hasRows(const Arguments &arguments, const LabelDocument &label)
{
    return !arguments.data.location.empty()
        || std::ranges::any_of(
            label.sources(), [](const DataSource &source) { return !source.isFunction(); });
}

/// The label; what is wrong with its file is part of the report.
std::optional<LabelDocument> loadLabel(const QString &path, BrokenItems broken, CheckReport &report)
{
    LoadResult loaded = DocumentFile::load(path, broken);
    report.label(errorsOf(loaded.problems, "broken-label"));
    return std::move(loaded.document);
}

ExitCode codeOf(PreflightEnd end, const CheckReport::Count &count)
{
    switch (end) {
    case PreflightEnd::LabelRefused:
        return ExitCode::BadDocument;
    case PreflightEnd::OptionsRefused:
        return ExitCode::Usage;
    case PreflightEnd::DataFailed:
        return ExitCode::DataSource;
    case PreflightEnd::Interrupted:
        return ExitCode::Interrupted;
    case PreflightEnd::Complete:
        return count.errors > 0 ? ExitCode::SomeFailed : ExitCode::Ok;
    }
    return ExitCode::Ok;
}

/// What a batch of the rows would be, as far as the arguments tell it.
BatchOptions batchOf(const Arguments &arguments, const QString &path, const LabelDocument &label)
{
    BatchOptions batch = arguments.batch;
    batch.pattern = QFile::decodeName(arguments.pattern.c_str());
    batch.format = arguments.format.value_or(BatchOptions::Format::Png);
    batch.separation.dpi = arguments.dpi.value_or(label.designDpi());
    batch.assets = assetsOf(arguments.assets, path);
    if (!batch.begin.isValid())
        batch.begin = QDateTime::currentDateTime();
    return batch;
}

/// The check has not come to all rows, or to none.
PreflightEnd tellEnd(PreflightEnd end, const RowSelection &chosen, CheckReport &report)
{
    if (end == PreflightEnd::Interrupted)
        report.label(errorsOf({ { {}, {}, u"the check was interrupted, and has not come to all rows"_s,
                                  u"check once more"_s } },
            "interrupted"));
    if (end != PreflightEnd::Complete || chosen.isAll() || report.count().rows > 0)
        return end;
    report.label(errorsOf({ CommandLine::problemOfRows() }, "unusable-option"));
    return PreflightEnd::OptionsRefused;
}

PreflightEnd checkLabel(
    const Arguments &arguments, const QString &path, const LabelDocument &label, CheckReport &report)
{
    BatchOptions batch = batchOf(arguments, path, label);
    if (!hasRows(arguments, label))
        return Preflight(label, nullptr, batch).run(report);
    Problems problems;
    const DataRows data = openData(arguments.data, label, path, problems);
    report.label(errorsOf(problems, "unreadable-data"));
    if (!data.rows)
        return PreflightEnd::DataFailed;
    batch.rowSource = data.source;
    report.expectRows(*data.rows, batch.rows);
    return tellEnd(Preflight(label, data.rows.get(), batch).run(report), batch.rows, report);
}

/// Whatever is wrong, there is a report that tells it: another worker checks once more where one has come to
/// its end. What comes from standard input has gone by.
ExitCode check(Arguments arguments, BrokenItems broken)
{
    if (arguments.data.location != "-")
        Worker::letOthersGoOn();
    arguments.batch.lostRows = Worker::lostRows();
    const Interruption::Postponed untilReportIsWritten;
    const QString path = QFile::decodeName(arguments.label.c_str());
    const std::unique_ptr<CheckReport> report = reportOf(arguments, path);
    const std::optional<LabelDocument> label = loadLabel(path, broken, *report);
    const PreflightEnd end
        = label ? checkLabel(arguments, path, *label, *report) : PreflightEnd::LabelRefused;
    return report->finish() ? codeOf(end, report->count()) : ExitCode::CannotWrite;
}

void addRowArguments(CLI::App &command, Arguments &arguments)
{
    const OptionGroup group(command, "Rows");
    CommandLine::addRows(command, arguments.batch.rows, "Check these rows only, for example 3,10-20,100-");
    addPlanArguments(command, arguments.batch);
    CommandLine::addMoment(command, arguments.batch.begin);
    addAssetArguments(command, arguments.assets);
}

void addPlateArguments(CLI::App &command, Arguments &arguments)
{
    const OptionGroup group(command, "Plates");
    CommandLine::addResolution(command, arguments.dpi);
    SeparationOptions &separation = arguments.batch.separation;
    CommandLine::addPlateFlags(command, separation.negative, separation.overprint);
    CommandLine::addVerify(command, arguments.batch.verify);
    CommandLine::addLayers(command, separation.layers);
}

void addNameArguments(CLI::App &command, Arguments &arguments)
{
    const OptionGroup group(command, "Names");
    CLI::Option *output
        = addPattern(command, "The names that files of a batch would have", arguments.pattern);
    addFormat(command, arguments.format)->needs(output);
}

void addReportArguments(CLI::App &command, Arguments &arguments)
{
    const OptionGroup group(command, "Report");
    command.add_flag("--strict", arguments.strict, "Let warnings count as errors");
    CLI::Option *json = command.add_flag("--json", arguments.json,
        "Write JSON for programs: a line for each finding, and one with their number");
    command
        .add_flag(
            "--junit", arguments.junit, "Write XML for systems that build and test: a case for each row")
        ->excludes(json);
    Progress::addOption(command, "the check", arguments.progress);
}

} // namespace

void addCheckCommand(CommandLine &commandLine)
{
    const auto arguments = std::make_shared<Arguments>();
    CLI::App &command = commandLine.addCommand("check",
        "Tell what is wrong with a label, and with each row of a table, before anything is printed",
        "vxlabel check shelf.vxl --data prices.csv --strict\n"
        "vxlabel check shelf.vxl --data prices.csv -o 'out/{sku}-{row:05}.{ink}.png'",
        [arguments](BrokenItems broken) { return check(*arguments, broken); });
    CommandLine::addLabel(command, arguments->label);
    addDataArguments(command, arguments->data);
    addRowArguments(command, *arguments);
    addPlateArguments(command, *arguments);
    addNameArguments(command, *arguments);
    addReportArguments(command, *arguments);
}
