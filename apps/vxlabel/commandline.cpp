// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/commandline.h"

#include "apps/vxlabel/commandtree.h"
#include "apps/vxlabel/helpformatter.h"
#include "apps/vxlabel/programversion.h"
#include "apps/vxlabel/terminal.h"
#include "apps/vxlabel/typingadvice.h"
#include "apps/vxlabel/worker.h"
#include "label/check/codeverifier.h"
#include "label/hostfonts.h"
#include "label/labellimits.h"

#include <QFile>

#include <CLI/CLI.hpp>

#include <sstream>

using namespace Qt::StringLiterals;

namespace {

constexpr auto exitCodes = R"(Exit codes:
  0    done
  1    done, but some rows failed, a check has found errors, or broken items were left out (with --keep-going)
  2    wrong usage
  3    the label cannot be read or printed
  4    the data cannot be read
  5    an output cannot be written, or a job of a batch was killed
  130  interrupted; no half-written file is left)";

std::string checkResolution(const std::string &text)
{
    bool isNumber = false;
    const double dpi = QString::fromStdString(text).toDouble(&isNumber);
    if (isNumber && dpi >= LabelLimits::MinDpi && dpi <= LabelLimits::MaxDpi)
        return {};
    std::ostringstream message;
    message << "takes a number from " << LabelLimits::MinDpi << " to " << LabelLimits::MaxDpi << ", not "
            << text;
    return message.str();
}

constexpr auto programExamples = R"(Examples:
  vxlabel separate warning-sign.vxl -o plates
  vxlabel batch shelf.vxl --data prices.csv -o 'out/{sku}.{ink}.png')";

constexpr auto seeAlso = R"(See also:
  vxlabel COMMAND --help  options and examples of a command
  man vxlabel             all of them on one page
  docs/batch.md           tables, rows, manifests, several processes
  docs/printing.md        plates, inks, dithering
  docs/barcodes.md        symbologies, modules, what can be scanned
  docs/file-formats.md    .vxl and .vxb)";

/// Lines below a heading.
std::string examplesText(const std::string &examples)
{
    const bool isOne = examples.find('\n') == std::string::npos;
    return (isOne ? "Example:\n  " : "Examples:\n  ") + CLI::detail::find_and_replace(examples, "\n", "\n  ");
}

/// The name of an option, without the value that stands behind it.
QString nameOf(const QString &argument)
{
    return argument.startsWith(u"--"_s) ? argument.section(u'=', 0, 0) : argument;
}

} // namespace

CommandLine::CommandLine()
    : m_program("Shows, checks and separates labels for printers with few inks.", "vxlabel")
{
    m_program.require_subcommand(0, 1); // parse() demands it, and is told when its name was not understood
    m_program.formatter(std::make_shared<HelpFormatter>());
    m_program.set_help_flag("-h,--help", "Print help on the program or the command, and exit");
    m_program.set_help_all_flag("--help-all", "Print help on all commands, and exit");
    m_program.fallthrough();
    m_program.set_version_flag(
        "--version", programVersion, "Print the versions of the program, Qt and libzint, and exit");
    m_program.add_flag(
        "--keep-going", m_keepGoing, "Leave broken items out instead of refusing the label; then exit 1");
    addLimits();
    m_program.footer(std::string(programExamples) + "\n\n" + exitCodes + "\n\n" + seeAlso);
}

void CommandLine::addLimits()
{
    const auto add = [this](const char *name, const char *unit, int &value, const char *help) {
        m_program.add_option(name, value, std::string(help) + "; 0 for any")
            ->type_name(unit)
            ->group("Limits")
            ->check(CLI::Range(0, 1'000'000))
            ->capture_default_str();
    };
    add("--max-memory", "MB", m_limits.megabytes, "The most memory");
    add("--max-time", "SECONDS", m_limits.seconds, "The most processor time for one label or one row");
    add("--max-file", "MB", m_limits.fileMegabytes, "The largest file that is written");
}

CLI::App &CommandLine::addCommand(
    const std::string &name, const std::string &description, const std::string &examples, const Job &job)
{
    CLI::App *command = m_program.add_subcommand(name, description);
    command->group("Commands");
    command->set_help_all_flag(); // the one of the program is enough
    command->footer(examplesText(examples));
    command->final_callback([this, job] { m_job = job; });
    return *command;
}

CLI::App &CommandLine::addQuestion(const std::string &name, const std::string &description,
    const std::string &examples, const Answer &answer)
{
    CLI::App &command = addCommand(name, description, examples, {});
    command.final_callback([this, answer] { m_answer = answer; });
    return command;
}

std::optional<ExitCode> CommandLine::parse(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i)
        m_arguments.append(QFile::decodeName(argv[i]));
    TypingAdvice::adviseOnValues(m_program);
    try {
        m_program.parse(argc, argv);
    } catch (const CLI::Success &question) {
        std::ostringstream answer;
        m_program.exit(question, answer, answer);
        return Terminal::print(QByteArray::fromStdString(answer.str())) ? ExitCode::Ok
                                                                        : ExitCode::CannotWrite;
    } catch (const CLI::ExtrasError &) {
        return refuseUnexpected(QString::fromLocal8Bit(m_program.remaining(true).front().c_str()));
    } catch (const MistypedValue &mistyped) {
        return refuse(QString::fromStdString(mistyped.what()), mistyped.advice());
    } catch (const CLI::ParseError &error) {
        return refuse(QString::fromLocal8Bit(error.what()));
    }
    if (m_answer)
        return Terminal::print(m_answer(m_program)) ? ExitCode::Ok : ExitCode::CannotWrite;
    if (!m_job)
        return refuse(QStringLiteral("a command is missing"));
    return std::nullopt;
}

const CLI::App &CommandLine::command() const
{
    const std::vector<CLI::App *> given = m_program.get_subcommands();
    return given.empty() ? m_program : *given.front();
}

ExitCode CommandLine::refuse(const QString &what, const QString &advice) const
{
    const QString help = u"see %1 --help"_s.arg(CommandTree::fullName(command()));
    Terminal::complain({ {}, {}, what, advice.isEmpty() ? help : advice });
    return ExitCode::Usage;
}

ExitCode CommandLine::refuseUnexpected(const QString &argument) const
{
    return refuse(u"\"%1\" was not expected"_s.arg(argument),
        TypingAdvice::meant(nameOf(argument), CommandTree::knownWords(command())));
}

ExitCode CommandLine::runJob() const
{
    HostFonts::list();
    Worker::setLimits(m_limits);
    return m_job(m_keepGoing ? BrokenItems::LeaveOut : BrokenItems::Refuse);
}

/// An empty name stands for the current folder in some places; a caller whose variable is empty does not mean
/// that.
CLI::Validator CommandLine::nameCheck()
{
    return CLI::Validator(
        [](const std::string &path) { return path.empty() ? "takes a name" : std::string(); }, "");
}

void CommandLine::addPath(CLI::App &command, const std::string &name, const std::string &value,
    const std::string &help, std::string &path)
{
    command.add_option(name, path, help)->required()->type_name(value)->check(nameCheck());
}

void CommandLine::addLabel(CLI::App &command, std::string &path)
{
    addPath(command, "LABEL", "", "The label, a .vxl or .vxb file", path);
}

void CommandLine::addResolution(CLI::App &command, std::optional<double> &dpi)
{
    command.add_option("--dpi", dpi, "Dots per inch of the output; the label's own resolution if not given")
        ->type_name("N")
        ->check(CLI::Validator(checkResolution, ""));
}

void CommandLine::addDither(CLI::App &command, std::optional<Dither> &dither)
{
    std::vector<std::string> names;
    for (const QString &name : DitherNames::all())
        names.push_back(name.toStdString());
    command
        .add_option_function<std::string>(
            "--dither",
            [&dither](const std::string &name) { dither = DitherNames::find(QString::fromStdString(name)); },
            "How pictures become dots: diffusion, ordered or threshold; as the label says if not given")
        ->type_name("KIND")
        ->check(CLI::IsMember(names));
}

void CommandLine::addLayers(CLI::App &command, QStringList &layers)
{
    command
        .add_option_function<std::vector<std::string>>(
            "--layer",
            [&layers](const std::vector<std::string> &names) {
                for (const std::string &name : names)
                    layers.append(QString::fromStdString(name));
            },
            "Print the items of this layer only, by its name or number; may be given several times")
        ->type_name("NAME|ID")
        ->allow_extra_args(false);
}

void CommandLine::addPlateFlags(CLI::App &command, bool &negative, bool &overprint)
{
    command.add_flag("--negative", negative, "White on black: print what does not have the ink's colour");
    command.add_flag("--overprint", overprint, "Let inks print over each other where items allow it");
}

void CommandLine::addVerify(CLI::App &command, bool &verify)
{
    command.add_flag_callback(
        "--verify",
        [&verify] {
            if (!CodeVerifier::isPossible())
                throw CLI::ValidationError("--verify", CodeVerifier::unavailable().text().toStdString());
            verify = true;
        },
        "Read every barcode back from the plates, and compare it with what it has to be");
}

CLI::Option *CommandLine::addForce(CLI::App &command, bool &force)
{
    return command.add_flag("--force", force, "Replace files that exist");
}

void CommandLine::addText(CLI::App &command, const std::string &name, const std::string &value,
    const std::string &help, QString &text)
{
    command
        .add_option_function<std::string>(
            name, [&text](const std::string &given) { text = QString::fromStdString(given); }, help)
        ->type_name(value)
        ->check(nameCheck());
}

Problem CommandLine::problemOfRows()
{
    return { {}, u"--rows"_s, u"chooses none of the rows that there are"_s, {} };
}

void CommandLine::addRows(CLI::App &command, RowSelection &rows, const std::string &help)
{
    addParsed<RowSelection>(command, "--rows", help, rows, RowSelection::parse)->type_name("LIST");
}

CLI::Option *CommandLine::addMoment(CLI::App &command, QDateTime &moment)
{
    return addParsed<QDateTime>(command, "--date",
        "The date and time that labels tell, for example 2026-05-31 or 2026-05-31T14:30; now if not given",
        moment,
        [](const QString &text, Problem &problem) {
            const QDateTime parsed = QDateTime::fromString(text, Qt::ISODate);
            problem = { {}, {}, text + u" is no date such as 2026-05-31 or 2026-05-31T14:30"_s, {} };
            return parsed.isValid() ? std::optional(parsed) : std::nullopt;
        })
        ->type_name("MOMENT");
}
