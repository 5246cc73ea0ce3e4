// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/inspectcommand.h"

#include "apps/vxlabel/commandline.h"
#include "apps/vxlabel/labelinput.h"
#include "apps/vxlabel/labelsummary.h"
#include "apps/vxlabel/terminal.h"

#include <memory>

namespace {

struct InspectOptions
{
    std::string label;
    bool json = false;
};

ExitCode inspect(const InspectOptions &options, BrokenItems broken)
{
    const std::optional<LabelInput> label = loadLabel(options.label, broken);
    if (!label)
        return ExitCode::BadDocument;
    const auto summary = options.json ? LabelSummary::asJson : LabelSummary::asTable;
    return Terminal::print(summary(label->document)) ? label->outcome : ExitCode::CannotWrite;
}

} // namespace

void addInspectCommand(CommandLine &commandLine)
{
    const auto options = std::make_shared<InspectOptions>();
    CLI::App &command = commandLine.addCommand("inspect", "Show the page, the inks and the items of a label",
        "vxlabel inspect calibration-sheet.vxl\nvxlabel inspect calibration-sheet.vxl --json",
        [options](BrokenItems broken) { return inspect(*options, broken); });
    CommandLine::addLabel(command, options->label);
    command.add_flag("--json", options->json, "Write JSON for programs instead of a table");
}
