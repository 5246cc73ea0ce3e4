// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/adjustmentarguments.h"

#include "apps/vxlabel/commandline.h"
#include "apps/vxlabel/optiongroup.h"

#include <CLI/CLI.hpp>

namespace {

QList<InkReplacement> replacementsOf(const std::string &text)
{
    Problem problem;
    const std::optional<QList<InkReplacement>> replacements
        = InkReplacement::parse(QString::fromStdString(text), problem);
    if (!replacements)
        throw CLI::ValidationError("--map", problem.text().toStdString());
    return *replacements;
}

} // namespace

void addAdjustmentArguments(CLI::App &command, PrintAdjustment &adjustment)
{
    const OptionGroup group(command, "Adjustments");
    command
        .add_option("--rotate", adjustment.rotation, "Turn the print clockwise: by 0, 90, 180 or 270 degrees")
        ->type_name("DEGREES")
        ->check(CLI::IsMember({ 0, 90, 180, 270 }));
    command.add_flag(
        "--mirror", adjustment.mirror, "Exchange left and right, as for a transfer that is pressed on");
    CommandLine::addParsed<LengthPair>(command, "--offset",
        "Move the print to the right and down, for example 1.5mm,-2pt; in mm, in, pt or dot",
        adjustment.offset, LengthPair::parse)
        ->type_name("X,Y");
    CommandLine::addParsed<double>(command, "--scale",
        "Scale the print about the middle of the label, for example 98% or 0.98", adjustment.scale,
        PrintAdjustment::parseScale)
        ->type_name("FACTOR");
    command
        .add_option_function<std::vector<std::string>>(
            "--map",
            [&adjustment](const std::vector<std::string> &texts) {
                for (const std::string &text : texts)
                    adjustment.replacements += replacementsOf(text);
            },
            "Print what is in one ink with another, for example red=black; may be given several times")
        ->type_name("INK=INK")
        ->allow_extra_args(false);
    command.add_flag("--keep-black", adjustment.keepBlack,
        "Keep the black ink as it is, whatever the others become, and print no other where it prints");
}
