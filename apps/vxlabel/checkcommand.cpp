// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/checkcommand.h"

#include "apps/vxlabel/assetarguments.h"
#include "apps/vxlabel/commandline.h"
#include "apps/vxlabel/dataarguments.h"
#include "apps/vxlabel/jsonreport.h"
#include "apps/vxlabel/junitreport.h"
#include "apps/vxlabel/optiongroup.h"
#include "apps/vxlabel/textreport.h"

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
    bool strict = false;
    bool json = false;
    bool junit = false;
    PreflightOptions check;
};

std::unique_ptr<CheckReport> reportOf(const Arguments &arguments, const QString &labelPath)
{
    if (arguments.json)
        return std::make_unique<JsonReport>(labelPath, arguments.strict);
    if (arguments.junit)
        return std::make_unique<JunitReport>(labelPath, arguments.strict);
    return std::make_unique<TextReport>(labelPath, arguments.strict);
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
    Findings findings;
    for (const Problem &problem : std::as_const(loaded.problems))
        findings.append({ Finding::Error, QLatin1String("broken-label"), problem });
    report.label(findings);
    return std::move(loaded.document);
}

ExitCode codeOf(PreflightEnd end, const CheckReport::Count &count)
{
    switch (end) {
    case PreflightEnd::LabelRefused:
        return ExitCode::BadDocument;
    case PreflightEnd::DataFailed:
        return ExitCode::DataSource;
    case PreflightEnd::Complete:
        return count.errors > 0 ? ExitCode::SomeFailed : ExitCode::Ok;
    }
    return ExitCode::Ok;
}

/// Nothing, after complaints, if the rows cannot be had.
std::optional<ExitCode> checkLabel(
    Arguments &arguments, const QString &path, const LabelDocument &label, CheckReport &report)
{
    DataRows data;
    if (hasRows(arguments, label)) {
        data = openData(arguments.data, label, path);
        if (!data.rows)
            return {};
    }
    PreflightOptions &options = arguments.check;
    options.separation.dpi = arguments.dpi.value_or(label.designDpi());
    options.rowSource = data.source;
    options.assets = assetsOf(arguments.assets, path);
    if (!options.begin.isValid())
        options.begin = QDateTime::currentDateTime();
    const ExitCode code = codeOf(Preflight(label, data.rows.get(), options).run(report), report.count());
    const bool isEmptyChoice = data.rows && !options.rows.isAll() && report.count().rows == 0;
    return code == ExitCode::Ok && isEmptyChoice ? CommandLine::refuseRows() : code;
}

ExitCode check(Arguments arguments, BrokenItems broken)
{
    const QString path = QFile::decodeName(arguments.label.c_str());
    const std::unique_ptr<CheckReport> report = reportOf(arguments, path);
    const std::optional<LabelDocument> label = loadLabel(path, broken, *report);
    const std::optional<ExitCode> code
        = label ? checkLabel(arguments, path, *label, *report) : ExitCode::BadDocument;
    if (!code)
        return ExitCode::DataSource;
    return report->finish() ? *code : ExitCode::CannotWrite;
}

void addRowArguments(CLI::App &command, Arguments &arguments)
{
    const OptionGroup group(command, "Rows");
    CommandLine::addRows(command, arguments.check.rows, "Check these rows only, for example 3,10-20,100-");
    CommandLine::addMoment(command, arguments.check.begin);
    addAssetArguments(command, arguments.assets);
}

void addPlateArguments(CLI::App &command, Arguments &arguments)
{
    const OptionGroup group(command, "Plates");
    CommandLine::addResolution(command, arguments.dpi);
    CommandLine::addPlateFlags(
        command, arguments.check.separation.negative, arguments.check.separation.overprint);
    CommandLine::addVerify(command, arguments.check.verify);
    CommandLine::addLayers(command, arguments.check.separation.layers);
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
}

} // namespace

void addCheckCommand(CommandLine &commandLine)
{
    const auto arguments = std::make_shared<Arguments>();
    CLI::App &command = commandLine.addCommand("check",
        "Tell what is wrong with a label, and with each row of a table, before anything is printed",
        "vxlabel check shelf.vxl --data prices.csv --strict",
        [arguments](BrokenItems broken) { return check(*arguments, broken); });
    CommandLine::addLabel(command, arguments->label);
    addDataArguments(command, arguments->data);
    addRowArguments(command, *arguments);
    addPlateArguments(command, *arguments);
    addReportArguments(command, *arguments);
}
