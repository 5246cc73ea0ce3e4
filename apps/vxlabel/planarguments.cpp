// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/planarguments.h"

#include "apps/vxlabel/commandline.h"

#include <CLI/CLI.hpp>

#include <map>

void addPlanArguments(CLI::App &command, BatchOptions &batch)
{
    CommandLine::addText(command, "--key", "COLUMN",
        "By what the manifest names rows; the first column if not given", batch.keyColumn);
    CommandLine::addText(command, "--copies-field", "COLUMN",
        "The column that tells how often a row is printed", batch.copiesColumn);
}

CLI::Option *addFormat(CLI::App &command, std::optional<BatchOptions::Format> &format)
{
    using Format = BatchOptions::Format;
    const std::map<std::string, Format> formats { { "png", Format::Png }, { "pbm", Format::Pbm },
        { "pdf", Format::Pdf }, { "pdf-plates", Format::PdfPlates } };
    return command
        .add_option_function<std::string>(
            "--format", [&format, formats](const std::string &text) { format = formats.at(text); },
            "png (if not given) or pbm: a picture of each plate; pdf: labels in colour; pdf-plates: a page "
            "for each plate")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({ "png", "pbm", "pdf", "pdf-plates" }));
}

CLI::Option *addPattern(CLI::App &command, const std::string &what, std::string &pattern)
{
    return command
        .add_option(
            "-o,--output", pattern, what + ", with places for values: {COLUMN}, {row:05}, {copy}, {ink}")
        ->type_name("PATTERN")
        ->check(CommandLine::nameCheck());
}
