// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/sheetarguments.h"

#include "apps/vxlabel/commandline.h"
#include "apps/vxlabel/optiongroup.h"

#include <CLI/CLI.hpp>

namespace {

constexpr int mostCells = 1'000'000;

/// The sheet that an argument is about.
SheetOptions &sheetOf(std::optional<SheetOptions> &sheet)
{
    return sheet ? *sheet : sheet.emplace();
}

} // namespace

void addSheetArguments(CLI::App &command, std::optional<SheetOptions> &sheet)
{
    const OptionGroup group(command, "Sheets of one PDF");
    CommandLine::addParsedWith<QSize>(
        command, "--nup",
        "Put labels on sheets, in so many columns and rows, for example 3x8; as many as fit if not given",
        [&sheet](QSize cells) { sheetOf(sheet).cells = cells; }, SheetOptions::parseCells)
        ->type_name("CxR");
    CommandLine::addParsedWith<LengthPair>(
        command, "--sheet",
        "The sheet: a3, a4 (if not given), a5, a6, letter, legal, or its sides, for example 210x297mm",
        [&sheet](const LengthPair &size) { sheetOf(sheet).size = size; }, SheetOptions::parseSize)
        ->type_name("SIZE");
    command
        .add_option_function<int>(
            "--start", [&sheet](int cell) { sheetOf(sheet).start = cell; },
            "The first cell to fill on the first sheet, from 1, row by row: of a sheet that is used in part")
        ->type_name("CELL")
        ->check(CLI::Range(1, mostCells));
    CommandLine::addParsedWith<LengthPair>(
        command, "--gap", "What is left between labels, for example 2mm, or 2mm,0 for columns and rows",
        [&sheet](const LengthPair &gap) { sheetOf(sheet).gap = gap; }, LengthPair::parseDistances)
        ->type_name("LENGTH");
    CommandLine::addParsedWith<LengthPair>(
        command, "--margin",
        "What is left at the edges of the sheet, for example 10mm, or 7mm,15mm for the sides and the top and "
        "bottom; labels are in the middle if not given",
        [&sheet](const LengthPair &margin) { sheetOf(sheet).margin = margin; }, LengthPair::parseDistances)
        ->type_name("LENGTH");
    command.add_flag_function(
        "--crop-marks", [&sheet](std::int64_t) { sheetOf(sheet).cropMarks = true; },
        "Mark where the sheet is to be cut");
}
