// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/convertcommand.h"

#include "apps/vxlabel/commandline.h"
#include "apps/vxlabel/labelinput.h"
#include "apps/vxlabel/outputs.h"
#include "apps/vxlabel/terminal.h"

#include <QFile>

#include <memory>

namespace {

struct ConvertOptions
{
    std::string from;
    std::string to;
    bool force = false;
};

ExitCode convert(const ConvertOptions &options, BrokenItems broken)
{
    const QString target = QFile::decodeName(options.to.c_str());
    const std::optional<DocumentFormat> format = DocumentFile::formatOf(target);
    if (!format) {
        Terminal::complain({ target, {}, QStringLiteral("the name tells no format"),
            QStringLiteral("let it end in .vxl or .vxb") });
        return ExitCode::Usage;
    }
    const std::optional<LabelInput> label = loadLabel(options.from, broken);
    if (!label)
        return ExitCode::BadDocument;
    Problems problems;
    const QByteArray data = DocumentFile::toData(label->document, *format, problems);
    Terminal::complain(problems, label->path);
    if (!problems.isEmpty())
        return ExitCode::BadDocument;

    Outputs outputs(options.force);
    outputs.add(target, data);
    return outputs.write() ? label->outcome : ExitCode::CannotWrite;
}

} // namespace

void addConvertCommand(CommandLine &commandLine)
{
    const auto options = std::make_shared<ConvertOptions>();
    CLI::App &command = commandLine.addCommand("convert",
        "Write a label in the format of the target's ending, without loss",
        "vxlabel convert bin-label.vxl bin-label.vxb\nvxlabel convert bin-label.vxb copy.vxl",
        [options](BrokenItems broken) { return convert(*options, broken); });
    CommandLine::addLabel(command, options->from);
    CommandLine::addPath(command, "TARGET", "", "The new file: .vxl is JSON, .vxb is binary", options->to);
    CommandLine::addForce(command, options->force);
}
