// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/batchcommand.h"

#include "apps/vxlabel/adjustmentarguments.h"
#include "apps/vxlabel/assetarguments.h"
#include "apps/vxlabel/batchjobs.h"
#include "apps/vxlabel/batchprogress.h"
#include "apps/vxlabel/commandline.h"
#include "apps/vxlabel/dataarguments.h"
#include "apps/vxlabel/interruption.h"
#include "apps/vxlabel/labelinput.h"
#include "apps/vxlabel/optiongroup.h"
#include "apps/vxlabel/planarguments.h"
#include "apps/vxlabel/sheetarguments.h"
#include "apps/vxlabel/terminal.h"
#include "apps/vxlabel/worker.h"
#include "label/batch/filedigest.h"
#include "label/batch/manifestshares.h"

#include <QFile>
#include <QFileInfo>
#include <QProcessEnvironment>

#include <CLI/CLI.hpp>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int mostJobs = 256;

struct Arguments
{
    QStringList all; ///< as this process was given them
    std::string label;
    std::string pattern;
    std::string pdf;
    std::string manifest;
    std::optional<BatchOptions::Format> format;
    DataArguments data;
    std::optional<double> dpi;
    AssetArguments assets;
    bool force = false;
    bool resume = false;
    bool onlyFailed = false;
    bool reprint = false;
    bool check = false;
    bool strict = false;
    std::optional<Progress::Form> progress;
    int jobs = 1;
    BatchOptions batch;
};

BatchOptions::Start startOf(const Arguments &arguments)
{
    using Start = BatchOptions::Start;
    return arguments.onlyFailed                 ? Start::OnlyFailed
        : arguments.resume || arguments.reprint ? Start::Resume
        : arguments.force                       ? Start::Replace
                                                : Start::New;
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
        return count.failed + count.untried > 0 ? ExitCode::SomeFailed : ExitCode::Ok;
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

/// "198 rows printed, 2 failed"; of a batch that is not at its end, with what is to be done.
QByteArray summaryOf(const BatchCount &count, bool isComplete)
{
    QString text = rowsText(count.printed) + u" printed"_s;
    if (count.labels != count.printed)
        text += u" on %1 labels"_s.arg(count.labels);
    if (count.kept > 0)
        text += u", %1 kept"_s.arg(count.kept);
    if (count.failed > 0)
        text += u", %1 failed"_s.arg(count.failed);
    if (count.untried > 0)
        text += u", %1 never tried; give --resume to print them"_s.arg(count.untried);
    else if (!isComplete)
        text += u"; give --resume to go on"_s;
    return (text + u'\n').toUtf8();
}

QString manifestOf(const Arguments &arguments)
{
    if (!arguments.manifest.empty())
        return QFile::decodeName(arguments.manifest.c_str());
    return arguments.pdf.empty() ? Batch::usualManifest(QFile::decodeName(arguments.pattern.c_str()))
                                 : Batch::usualManifestOfPdf(QFile::decodeName(arguments.pdf.c_str()));
}

bool hasRows(const BatchCount &count)
{
    return count.printed + count.kept + count.failed + count.untried > 0;
}

/// Whether all rows were asked for, or some were there. A share may have none of them.
bool hasChosenRows(const BatchOptions &options, const BatchCount &count)
{
    return options.rows.isAll() || options.shard != Shard() || hasRows(count);
}

/// What does not go with one PDF of all labels.
Problems problemsOfOnePdf(const Arguments &arguments)
{
    using Format = BatchOptions::Format;
    Problems problems;
    const QString pdf = QFile::decodeName(arguments.pdf.c_str());
    if (!pdf.endsWith(u".pdf"_s, Qt::CaseInsensitive))
        problems.append({ pdf, {}, u"the output is a PDF"_s, u"let its name end in .pdf"_s });
    else if (QFileInfo(pdf).absoluteFilePath() == QFileInfo(manifestOf(arguments)).absoluteFilePath())
        problems.append({ pdf, {}, u"cannot be the manifest as well"_s, u"choose another name for it"_s });
    const Format format = arguments.format.value_or(Format::Pdf);
    if (format != Format::Pdf && format != Format::PdfPlates)
        problems.append({ {}, {}, u"--pdf does not write this format"_s,
            u"give --format pdf or --format pdf-plates, or leave it out"_s });
    if (arguments.jobs > 1 || arguments.batch.shard != Shard())
        problems.append({ {}, {}, u"one PDF is written by one process"_s,
            u"leave out --jobs and --shard, or write a PDF for each row with -o"_s });
    if (arguments.resume || arguments.onlyFailed || arguments.reprint)
        problems.append({ {}, {}, u"one PDF is written as a whole"_s,
            u"give --force to begin again, or write a PDF for each row with -o"_s });
    return problems;
}

/// What does not go with labels in colour.
Problems problemsOfColors(const BatchOptions &batch)
{
    const auto refuse = [](const QString &option) {
        return Problems { { {}, {}, option + u" changes plates, and a PDF in colour has none"_s,
            u"give --format pdf-plates"_s } };
    };
    Problems problems;
    if (batch.separation.negative)
        problems += refuse(u"--negative"_s);
    if (batch.separation.overprint)
        problems += refuse(u"--overprint"_s);
    if (batch.separation.dither)
        problems += refuse(u"--dither"_s);
    return problems;
}

/// Takes the format that the arguments mean, and complains about what does not go together.
bool chooseFormat(Arguments &arguments)
{
    using Format = BatchOptions::Format;
    if (arguments.pattern.empty() && arguments.pdf.empty()) {
        Terminal::complain({ {}, {}, u"--output or --pdf is required"_s, u"see vxlabel batch --help"_s });
        return false;
    }
    Problems problems = arguments.pdf.empty() ? Problems() : problemsOfOnePdf(arguments);
    if (arguments.batch.sheet && arguments.pdf.empty())
        problems.append({ {}, {}, u"sheets are pages of one PDF"_s, u"give --pdf instead of --output"_s });
    arguments.batch.format = arguments.format.value_or(arguments.pdf.empty() ? Format::Png : Format::Pdf);
    if (arguments.batch.format == Format::Pdf)
        problems += problemsOfColors(arguments.batch);
    Terminal::complain(problems, {});
    return problems.isEmpty();
}

/// What keeps the record of an earlier batch from being forgotten.
Problems problemsOfReplacing(const QStringList &existing, const RowSelection &rows)
{
    Problems problems;
    for (const QString &path : existing)
        (void)Manifest::mayReplace(path, problems);
    if (problems.isEmpty() && !existing.isEmpty() && !rows.isAll())
        problems.append(
            { existing[0], {}, u"holds rows that --rows does not choose, and that --force would forget"_s,
                u"give --reprint to print the chosen ones again"_s });
    return problems;
}

/// Lays out the record of the batch for its processes. False, with complaints, if it is in the way.
bool prepareManifests(const Arguments &arguments)
{
    const QString manifest = manifestOf(arguments);
    const QStringList existing = ManifestShares::existing(manifest);
    Problems problems;
    switch (startOf(arguments)) {
    case BatchOptions::Start::New:
        if (!existing.isEmpty() && Manifest::mayReplace(existing[0], problems))
            problems.append(Manifest::inTheWay(existing[0], arguments.pdf.empty()));
        break;
    case BatchOptions::Start::Replace:
        problems
            = problemsOfReplacing(existing, arguments.pdf.empty() ? arguments.batch.rows : RowSelection());
        for (const QString &path : problems.isEmpty() ? existing : QStringList())
            QFile::remove(path);
        break;
    case BatchOptions::Start::OnlyFailed:
        if (existing.isEmpty())
            problems.append({ manifest, {}, u"is not there: no row is known to have failed"_s,
                u"leave out --only-failed"_s });
        [[fallthrough]];
    case BatchOptions::Start::Resume:
        (void)ManifestShares::rearrange(manifest, arguments.jobs, problems);
        break;
    }
    Terminal::complain(problems, {});
    return problems.isEmpty();
}

/// What every job is given, but for its share: the same moment for all.
QStringList argumentsOfJob(const Arguments &arguments)
{
    QStringList all = arguments.all;
    const qsizetype command = all.indexOf(u"batch"_s);
    for (const QString &own : { u"json"_s, u"--progress"_s, arguments.batch.begin.toString(Qt::ISODate),
             u"--date"_s, u"1"_s, u"--jobs"_s })
        all.insert(command + 1, own);
    return all;
}

/// Puts the records of all jobs together, in place of them.
bool mergeManifests(const Arguments &arguments)
{
    const QString manifest = manifestOf(arguments);
    QStringList parts;
    for (int index = 0; index < arguments.jobs; ++index)
        parts.append(ManifestShares::pathOf(manifest, { index, arguments.jobs }));
    Problems problems;
    const bool isMerged = ManifestShares::merge(parts, manifest, arguments.batch.rows, problems).has_value();
    Terminal::complain(problems, manifest);
    for (const QString &part : isMerged ? parts : QStringList())
        QFile::remove(part);
    return isMerged;
}

/// Whether all jobs have come to the end of the rows. One that stops at a row that failed has not, nor have
/// those that leave rows for another time.
bool areAtTheEnd(ExitCode code, const BatchCount &count, BatchOptions::OnError onError)
{
    return code == ExitCode::Ok
        || (code == ExitCode::SomeFailed && onError == BatchOptions::OnError::Skip && count.untried == 0);
}

ExitCode runJobs(const Arguments &arguments)
{
    if (arguments.batch.shard != Shard()) {
        Terminal::complain(
            { {}, {}, u"a share of a batch is printed by one job"_s, u"give either --jobs or --shard"_s });
        return ExitCode::Usage;
    }
    if (arguments.data.location == "-") {
        Terminal::complain(
            { {}, {}, u"several jobs cannot share standard input"_s, u"write the data into a file"_s });
        return ExitCode::Usage;
    }
    BatchProgress progress(arguments.progress.value_or(Progress::usualForm()), {});
    BatchJobs jobs(argumentsOfJob(arguments), arguments.jobs, progress);
    ExitCode code = jobs.run();
    const BatchCount count = jobs.count();
    progress.finish(count);
    const bool isComplete = areAtTheEnd(code, count, arguments.batch.onError) && mergeManifests(arguments);
    if (code == ExitCode::Ok && !isComplete)
        code = ExitCode::CannotWrite;
    // Jobs that could not begin have said why.
    if (!isComplete && code != ExitCode::Interrupted && !hasRows(count))
        return code;
    const QByteArray summary = (jobs.isCountExact() ? "" : "at least ") + summaryOf(count, isComplete);
    return Terminal::print(summary) ? code : ExitCode::CannotWrite;
}

ExitCode runRows(Arguments arguments, BrokenItems broken)
{
    const std::optional<LabelInput> label = loadLabel(arguments.label, broken);
    if (!label)
        return ExitCode::BadDocument;
    Problems problems;
    const DataRows data = openData(arguments.data, label->document, label->path, problems);
    Terminal::complain(problems, {});
    if (!data.rows)
        return ExitCode::DataSource;
    BatchOptions &options = arguments.batch;
    options.pattern = QFile::decodeName(arguments.pattern.c_str());
    options.pdf = QFile::decodeName(arguments.pdf.c_str());
    options.title = QFileInfo(label->path).completeBaseName();
    options.manifest = manifestOf(arguments);
    options.separation.dpi = arguments.dpi.value_or(label->document.designDpi());
    options.start = startOf(arguments);
    options.reprints = arguments.reprint;
    if (arguments.check)
        options.check = arguments.strict ? BatchOptions::Check::Warnings : BatchOptions::Check::Errors;
    options.labelDigest = FileDigest::ofFile(label->path);
    options.rowSource = data.source;
    options.inputs = data.files + QStringList { label->path };
    options.mostFileBytes = Worker::limits().fileBytes();
    options.assets = assetsOf(arguments.assets, label->path);

    BatchRefusal refusal;
    const std::unique_ptr<Batch> batch = Batch::of(label->document, *data.rows, options, refusal);
    Terminal::complain(refusal.problems, label->path);
    if (!batch)
        return codeOf(refusal);
    BatchProgress progress(arguments.progress.value_or(Progress::usualForm()), label->path);
    const BatchEnd end = batch->run(progress);
    progress.finish(batch->count());
    const BatchCount count = progress.ofAllWorkers(batch->count());
    // A PDF of some of the labels is none.
    const bool isWritten = options.pdf.isEmpty() || end == BatchEnd::Complete;
    const bool isTold = Terminal::print(
        isWritten ? summaryOf(count, end == BatchEnd::Complete) : QByteArray("no PDF was written\n"));
    ExitCode code = codeOf(end, batch->count());
    if (code == ExitCode::Ok && !hasChosenRows(options, count)) {
        Terminal::complain(CommandLine::problemOfRows());
        code = ExitCode::Usage;
    }
    return code != ExitCode::Ok ? code : isTold ? label->outcome : ExitCode::CannotWrite;
}

/// When a batch begins: one that is resumed has begun before.
QDateTime beginOf(const Arguments &arguments)
{
    Problems unread;
    const QStringList existing = ManifestShares::existing(manifestOf(arguments));
    const bool goesOn = arguments.resume || arguments.onlyFailed || arguments.reprint;
    const std::optional<QJsonObject> head
        = goesOn && !existing.isEmpty() ? Manifest::headOf(existing[0], unread) : std::nullopt;
    const QString begin = head ? head->value(u"begin"_s).toString() : QString();
    return begin.isEmpty() ? QDateTime::currentDateTime() : QDateTime::fromString(begin, Qt::ISODate);
}

/// Another worker goes on where one has come to its end, or begins one PDF of all labels again; what comes
/// from standard input has gone by.
void goOnBehindLostRows(Arguments &arguments)
{
    if (arguments.data.location != "-")
        Worker::letOthersGoOn();
    arguments.batch.lostRows = Worker::lostRows();
    if (arguments.batch.lostRows.isEmpty() || arguments.onlyFailed)
        return;
    (arguments.pdf.empty() ? arguments.resume : arguments.force) = true;
    if (!arguments.pdf.empty())
        Worker::countAnew();
}

ExitCode runBatch(Arguments arguments, BrokenItems broken)
{
    if (!chooseFormat(arguments))
        return ExitCode::Usage;
    goOnBehindLostRows(arguments);
    if (!arguments.batch.begin.isValid())
        arguments.batch.begin = beginOf(arguments);
    // The record of the batch has whole seconds.
    arguments.batch.begin = arguments.batch.begin.addMSecs(-arguments.batch.begin.time().msec());
    const Interruption::Postponed untilRowIsDone;
    // A share of a batch keeps its record beside those of the others.
    const bool isShare = arguments.batch.shard != Shard();
    if (!isShare && !prepareManifests(arguments))
        return ExitCode::CannotWrite;
    return arguments.jobs > 1 ? runJobs(arguments) : runRows(std::move(arguments), broken);
}

/// One that this program gives to its own processes in front of what it was given itself.
CLI::Option *takesFirst(CLI::Option *option)
{
    return option->multi_option_policy(CLI::MultiOptionPolicy::TakeFirst);
}

void addRowArguments(CLI::App &command, Arguments &arguments)
{
    const OptionGroup group(command, "Rows");
    BatchOptions &batch = arguments.batch;
    CommandLine::addRows(command, batch.rows, "Print these rows only, for example 3,10-20,100-");
    takesFirst(
        CommandLine::addParsed<Shard>(command, "--shard",
            "Print share I of N of the rows, from 0/N on; auto takes both from the environment", batch.shard,
            [](const QString &text, Problem &problem) {
                return Shard::parse(text, QProcessEnvironment::systemEnvironment(), problem);
            }))
        ->type_name("I/N");
    takesFirst(command.add_option(
                   "--jobs", arguments.jobs, "Share the rows among this many processes; 1 if not given"))
        ->type_name("N")
        ->check(CLI::Range(1, mostJobs));
    addPlanArguments(command, batch);
    command
        .add_option_function<std::string>(
            "--on-error",
            [&batch](const std::string &text) {
                batch.onError = text == "stop" ? BatchOptions::OnError::Stop : BatchOptions::OnError::Skip;
            },
            "skip rows that cannot be printed (if not given), or stop at the first")
        ->type_name("WHAT")
        ->check(CLI::IsMember({ "skip", "stop" }));
    CLI::Option *check = command.add_flag("--check", arguments.check,
        "Check each row as vxlabel check does, and print none in which that finds errors");
    command.add_flag("--strict", arguments.strict, "Let warnings of --check count as errors")->needs(check);
    takesFirst(CommandLine::addMoment(command, batch.begin));
}

void addPlateArguments(CLI::App &command, Arguments &arguments)
{
    const OptionGroup group(command, "Plates");
    BatchOptions &batch = arguments.batch;
    addFormat(command, arguments.format);
    CommandLine::addResolution(command, arguments.dpi);
    CommandLine::addPlateFlags(command, batch.separation.negative, batch.separation.overprint);
    CommandLine::addVerify(command, batch.verify);
    CommandLine::addDither(command, batch.separation.dither);
    CommandLine::addLayers(command, batch.separation.layers);
    addAdjustmentArguments(command, batch.adjustment);
}

void addFileArguments(CLI::App &command, Arguments &arguments)
{
    const OptionGroup group(command, "Files");
    CLI::Option *output = addPattern(command, "The names of the files", arguments.pattern);
    command.add_option("--pdf", arguments.pdf, "One PDF of all labels, instead of files for each row")
        ->type_name("FILE")
        ->check(CommandLine::nameCheck())
        ->excludes(output);
    command
        .add_option("--manifest", arguments.manifest,
            "The record of the batch; manifest.jsonl in the first folder of the pattern, or "
            "NAME.manifest.jsonl beside NAME.pdf, if not given")
        ->type_name("FILE")
        ->check(CommandLine::nameCheck());
    addAssetArguments(command, arguments.assets);
    CLI::Option *resume
        = command.add_flag("--resume", arguments.resume, "Go on with a batch that was interrupted or killed");
    CLI::Option *onlyFailed
        = command.add_flag("--only-failed", arguments.onlyFailed, "Print only the rows that failed before");
    CLI::Option *reprint = command.add_flag(
        "--reprint", arguments.reprint, "Print the chosen rows of a batch again, each in its place");
    CommandLine::addForce(command, arguments.force)
        ->excludes(resume)
        ->excludes(onlyFailed)
        ->excludes(reprint->excludes(onlyFailed));
    takesFirst(Progress::addOption(command, "the batch", arguments.progress));
}

} // namespace

void addBatchCommand(CommandLine &commandLine)
{
    const auto arguments = std::make_shared<Arguments>();
    CLI::App &command = commandLine.addCommand("batch",
        "Print a label for each row of a table, as plates or PDFs and with a manifest of them",
        "vxlabel batch shelf.vxl --data prices.csv -o 'out/{sku}-{row:05}.{ink}.png'\n"
        "vxlabel batch shelf.vxl --data prices.csv -o 'some/{sku}.{ink}.png' --rows 2-\n"
        "vxlabel batch shelf.vxl --data prices.csv -o 'many/{sku}.{ink}.png' --jobs 2\n"
        "vxlabel batch shelf.vxl --data prices.csv --pdf shelf.pdf --nup 2x8 --gap 2mm --crop-marks",
        [arguments, &commandLine](BrokenItems broken) {
            arguments->all = commandLine.arguments();
            return runBatch(*arguments, broken);
        });
    CommandLine::addLabel(command, arguments->label);
    addDataArguments(command, arguments->data);
    addRowArguments(command, *arguments);
    addPlateArguments(command, *arguments);
    addFileArguments(command, *arguments);
    addSheetArguments(command, arguments->batch.sheet);
}
