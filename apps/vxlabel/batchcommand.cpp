// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/batchcommand.h"

#include "apps/vxlabel/batchprogress.h"
#include "apps/vxlabel/commandline.h"
#include "apps/vxlabel/datainput.h"
#include "apps/vxlabel/interruption.h"
#include "apps/vxlabel/labelinput.h"
#include "apps/vxlabel/terminal.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QProcessEnvironment>

#include <CLI/CLI.hpp>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

struct Arguments
{
    std::string label;
    std::string pattern;
    std::string manifest;
    DataArguments data;
    std::optional<double> dpi;
    std::vector<std::string> search;
    bool allowAnyPath = false;
    bool force = false;
    bool resume = false;
    bool onlyFailed = false;
    std::optional<BatchProgress::Form> progress;
    BatchOptions batch;
};

BatchOptions::Start startOf(const Arguments &arguments)
{
    using Start = BatchOptions::Start;
    return arguments.onlyFailed ? Start::OnlyFailed
        : arguments.resume      ? Start::Resume
        : arguments.force       ? Start::Replace
                                : Start::New;
}

/// Files that rows name lie beside the label, or where the arguments tell.
AssetPaths assetsOf(const Arguments &arguments, const QString &labelPath)
{
    QStringList folders { QFileInfo(labelPath).absolutePath() };
    for (const std::string &folder : arguments.search)
        folders.append(QFile::decodeName(folder.c_str()));
    return AssetPaths(folders, arguments.allowAnyPath);
}

QByteArray digestOf(const QString &path)
{
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file) ? hash.result().toHex() : QByteArray();
}

ExitCode codeOf(const BatchRefusal &refusal)
{
    switch (refusal.kind) {
    case BatchRefusal::Label:
        return ExitCode::BadDocument;
    case BatchRefusal::Options:
        return ExitCode::Usage;
    case BatchRefusal::Output:
        return ExitCode::CannotWrite;
    }
    return ExitCode::Usage;
}

ExitCode codeOf(BatchEnd end, const BatchCount &count)
{
    switch (end) {
    case BatchEnd::Complete:
        return count.failed > 0 ? ExitCode::SomeFailed : ExitCode::Ok;
    case BatchEnd::Stopped:
        return ExitCode::SomeFailed;
    case BatchEnd::DataFailed:
        return ExitCode::DataSource;
    case BatchEnd::CannotWrite:
        return ExitCode::CannotWrite;
    case BatchEnd::Interrupted:
        return ExitCode::Interrupted;
    }
    return ExitCode::Ok;
}

QString rowsText(qint64 rows)
{
    return rows == 1 ? u"1 row"_s : u"%1 rows"_s.arg(rows);
}

/// "198 rows printed, 2 failed"
QByteArray summaryOf(const BatchCount &count)
{
    QString text = rowsText(count.printed) + u" printed"_s;
    if (count.labels != count.printed)
        text += u" on %1 labels"_s.arg(count.labels);
    if (count.kept > 0)
        text += u", %1 kept"_s.arg(count.kept);
    if (count.failed > 0)
        text += u", %1 failed"_s.arg(count.failed);
    return (text + u'\n').toUtf8();
}

ExitCode runBatch(Arguments arguments, BrokenItems broken)
{
    const std::optional<LabelInput> label = loadLabel(arguments.label, broken);
    if (!label)
        return ExitCode::BadDocument;
    const DataRows data = openData(arguments.data, label->document, label->path);
    if (!data.rows)
        return ExitCode::DataSource;
    BatchOptions &options = arguments.batch;
    options.pattern = QFile::decodeName(arguments.pattern.c_str());
    options.manifest = QFile::decodeName(arguments.manifest.c_str());
    options.separation.dpi = arguments.dpi.value_or(label->document.designDpi());
    options.start = startOf(arguments);
    options.labelDigest = digestOf(label->path);
    options.rowSource = data.source;
    options.assets = assetsOf(arguments, label->path);
    if (!options.begin.isValid())
        options.begin = QDateTime::currentDateTime();

    const Interruption::Postponed untilRowIsDone;
    BatchRefusal refusal;
    const std::unique_ptr<Batch> batch = Batch::of(label->document, *data.rows, options, refusal);
    Terminal::complain(refusal.problems, label->path);
    if (!batch)
        return codeOf(refusal);
    BatchProgress progress(arguments.progress.value_or(BatchProgress::usualForm()), label->path);
    const BatchEnd end = batch->run(progress);
    progress.finish(batch->count());
    const bool isTold = Terminal::print(summaryOf(batch->count()));
    const ExitCode code = codeOf(end, batch->count());
    return code != ExitCode::Ok ? code : isTold ? label->outcome : ExitCode::CannotWrite;
}

/// An option whose text has to be understood.
template <typename Value>
CLI::Option *addParsed(CLI::App &command, const std::string &name, const std::string &help, Value &value,
    const std::function<std::optional<Value>(const QString &, Problem &)> &parse)
{
    return command.add_option_function<std::string>(
        name,
        [&value, parse, name](const std::string &text) {
            Problem problem;
            const std::optional<Value> parsed = parse(QString::fromStdString(text), problem);
            if (!parsed)
                throw CLI::ValidationError(name, problem.text().toStdString());
            value = *parsed;
        },
        help);
}

void addRowArguments(CLI::App &command, BatchOptions &batch)
{
    addParsed<RowSelection>(
        command, "--rows", "Print these rows only, for example 3,10-20,100-", batch.rows, RowSelection::parse)
        ->type_name("LIST");
    addParsed<Shard>(command, "--shard",
        "Print share I of N of the rows, from 0/N on; auto takes both from the environment", batch.shard,
        [](const QString &text, Problem &problem) {
            return Shard::parse(text, QProcessEnvironment::systemEnvironment(), problem);
        })
        ->type_name("I/N");
    CommandLine::addText(command, "--key", "COLUMN",
        "By what the manifest names rows; the first column if not given", batch.keyColumn);
    CommandLine::addText(command, "--copies-field", "COLUMN",
        "The column that tells how often a row is printed", batch.copiesColumn);
    command
        .add_option_function<std::string>(
            "--on-error",
            [&batch](const std::string &text) {
                batch.onError = text == "stop" ? BatchOptions::OnError::Stop : BatchOptions::OnError::Skip;
            },
            "skip rows that cannot be printed (if not given), or stop at the first")
        ->type_name("WHAT")
        ->check(CLI::IsMember({ "skip", "stop" }));
    addParsed<QDateTime>(command, "--date",
        "The date and time that labels tell, for example 2026-05-31 or 2026-05-31T14:30; now if not given",
        batch.begin,
        [](const QString &text, Problem &problem) {
            const QDateTime moment = QDateTime::fromString(text, Qt::ISODate);
            problem = { {}, {}, text + u" is no date"_s, {} };
            return moment.isValid() ? std::optional(moment) : std::nullopt;
        })
        ->type_name("MOMENT");
}

void addPlateArguments(CLI::App &command, Arguments &arguments)
{
    BatchOptions &batch = arguments.batch;
    command
        .add_option_function<std::string>(
            "--format",
            [&batch](const std::string &text) {
                batch.format = text == "pbm" ? BatchOptions::Format::Pbm : BatchOptions::Format::Png;
            },
            "The format of the plates: png (if not given) or pbm")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({ "png", "pbm" }));
    CommandLine::addResolution(command, arguments.dpi);
    CommandLine::addPlateFlags(command, batch.separation.negative, batch.separation.overprint);
    CommandLine::addDither(command, batch.separation.dither);
    CommandLine::addLayers(command, batch.separation.layers);
}

void addFileArguments(CLI::App &command, Arguments &arguments)
{
    CommandLine::addPath(command, "-o,--output", "PATTERN",
        "The names of the plates, with places for values: {COLUMN}, {row:05}, {copy}, {ink}",
        arguments.pattern);
    command
        .add_option("--manifest", arguments.manifest,
            "The record of the batch; manifest.jsonl in the first folder of the pattern if not given")
        ->type_name("FILE")
        ->check(CommandLine::nameCheck());
    command
        .add_option(
            "--search", arguments.search, "A folder of pictures that rows name, beside the label's own")
        ->type_name("DIR")
        ->allow_extra_args(false)
        ->check(CLI::ExistingDirectory);
    command.add_flag("--allow-any-path", arguments.allowAnyPath, "Let rows name pictures in any folder");
    CLI::Option *resume
        = command.add_flag("--resume", arguments.resume, "Go on with a batch that was interrupted or killed");
    CLI::Option *onlyFailed
        = command.add_flag("--only-failed", arguments.onlyFailed, "Print only the rows that failed before");
    CommandLine::addForce(command, arguments.force)->excludes(resume)->excludes(onlyFailed);
    command
        .add_option_function<std::string>(
            "--progress",
            [&arguments](const std::string &text) {
                arguments.progress = text == "json" ? BatchProgress::Form::Json
                    : text == "line"                ? BatchProgress::Form::Line
                                                    : BatchProgress::Form::None;
            },
            "How far the batch is, on standard error: line (if that is a terminal), json or none")
        ->type_name("FORM")
        ->check(CLI::IsMember({ "line", "json", "none" }));
}

} // namespace

void addBatchCommand(CommandLine &commandLine)
{
    const auto arguments = std::make_shared<Arguments>();
    CLI::App &command = commandLine.addCommand("batch",
        "Print a label for each row of a table, as plates and with a manifest of them",
        "vxlabel batch shelf.vxl --data prices.csv -o 'out/{sku}-{row:05}.{ink}.png'",
        [arguments](BrokenItems broken) { return runBatch(*arguments, broken); });
    CommandLine::addLabel(command, arguments->label);
    addDataArguments(command, arguments->data);
    addRowArguments(command, arguments->batch);
    addPlateArguments(command, *arguments);
    addFileArguments(command, *arguments);
}
