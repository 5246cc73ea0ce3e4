// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "apps/vxlabel/exitcode.h"
#include "apps/vxlabel/worklimits.h"
#include "label/batch/rowselection.h"
#include "label/dither.h"
#include "label/documentfile.h"

#include <QByteArray>
#include <QDateTime>
#include <QStringList>
#include <QtGlobal>

#include <CLI/App.hpp>

#include <functional>
#include <optional>
#include <string>

/// The arguments: the program's own options and its commands.
class CommandLine
{
public:
    using Job = std::function<ExitCode(BrokenItems)>;
    using Answer = std::function<QByteArray(const CLI::App &program)>;

    CommandLine();
    Q_DISABLE_COPY_MOVE(CommandLine)

    /// Adds a command, to which the caller adds its arguments. The job runs when they have been read. Each
    /// line of the examples is one, which can be run as it stands.
    CLI::App &addCommand(
        const std::string &name, const std::string &description, const std::string &examples, const Job &job);
    /// The same for one that only prints what the program knows of itself, without the application that items
    /// need to be painted.
    CLI::App &addQuestion(const std::string &name, const std::string &description,
        const std::string &examples, const Answer &answer);

    /// Reads the arguments. Answers questions for help and version, and wrong usage, with an exit code;
    /// nothing when there is a job to run.
    [[nodiscard]] std::optional<ExitCode> parse(int argc, char **argv);
    [[nodiscard]] ExitCode runJob() const;
    /// What was read, without the name of the program.
    [[nodiscard]] const QStringList &arguments() const { return m_arguments; }

    // Arguments that several commands have
    /// A file or folder that must be given; value stands for it in the help on an option.
    static void addPath(CLI::App &command, const std::string &name, const std::string &value,
        const std::string &help, std::string &path);
    static void addLabel(CLI::App &command, std::string &path);
    static void addResolution(CLI::App &command, std::optional<double> &dpi);
    static void addDither(CLI::App &command, std::optional<Dither> &dither);
    static void addLayers(CLI::App &command, QStringList &layers);
    /// What plates may be printed like.
    static void addPlateFlags(CLI::App &command, bool &negative, bool &overprint);
    /// That barcodes are read back; wrong usage in builds without a reader.
    static void addVerify(CLI::App &command, bool &verify);
    static CLI::Option *addForce(CLI::App &command, bool &force);
    /// A text that may be missing, but not be empty.
    static void addText(CLI::App &command, const std::string &name, const std::string &value,
        const std::string &help, QString &text);
    /// That a choice of rows has none of those that there are.
    [[nodiscard]] static Problem problemOfRows();
    static void addRows(CLI::App &command, RowSelection &rows, const std::string &help);
    /// The date and time that labels tell; invalid if not given.
    static CLI::Option *addMoment(CLI::App &command, QDateTime &moment);
    /// An option whose text has to be understood: parse gives its value, or else a problem.
    template <typename Value>
    static CLI::Option *addParsed(CLI::App &command, const std::string &name, const std::string &help,
        Value &value, const std::function<std::optional<Value>(const QString &, Problem &)> &parse)
    {
        return addParsedWith<Value>(
            command, name, help, [&value](const Value &parsed) { value = parsed; }, parse);
    }
    /// The same with a function that takes the value.
    template <typename Value>
    static CLI::Option *addParsedWith(CLI::App &command, const std::string &name, const std::string &help,
        const std::function<void(const Value &)> &take,
        const std::function<std::optional<Value>(const QString &, Problem &)> &parse)
    {
        const auto takeText = [take, parse, name](const std::string &text) {
            Problem problem;
            const std::optional<Value> parsed = parse(QString::fromStdString(text), problem);
            if (!parsed)
                throw CLI::ValidationError(name, problem.text().toStdString());
            take(*parsed);
        };
        return command.add_option_function<std::string>(name, takeText, help);
    }
    /// That a name is not empty.
    [[nodiscard]] static CLI::Validator nameCheck();

private:
    void addLimits();
    /// The command that is given, or the program itself.
    [[nodiscard]] const CLI::App &command() const;
    /// Points to the help when there is no better advice.
    [[nodiscard]] ExitCode refuse(const QString &what, const QString &advice = {}) const;
    [[nodiscard]] ExitCode refuseUnexpected(const QString &argument) const;

    CLI::App m_program;
    QStringList m_arguments;
    bool m_keepGoing = false;
    WorkLimits m_limits;
    Job m_job;
    Answer m_answer;
};
