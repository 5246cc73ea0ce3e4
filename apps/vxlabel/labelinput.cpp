// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/labelinput.h"

#include "apps/vxlabel/terminal.h"

#include <QFile>

std::optional<LabelInput> loadLabel(const std::string &path, BrokenItems broken)
{
    const QString file = QFile::decodeName(path.c_str());
    LoadResult loaded = DocumentFile::load(file, broken);
    Terminal::complain(loaded.problems, file);
    if (!loaded.document)
        return std::nullopt;
    const ExitCode outcome = loaded.problems.isEmpty() ? ExitCode::Ok : ExitCode::SomeFailed;
    return LabelInput { file, std::move(*loaded.document), outcome };
}

std::optional<PlateAdjuster> adjusterFor(
    const LabelInput &label, const SeparationOptions &options, const PrintAdjustment &adjustment)
{
    Problems problems;
    std::optional<PlateAdjuster> adjuster = PlateAdjuster::of(label.document, options, adjustment, problems);
    Terminal::complain(problems, label.path);
    return adjuster;
}

std::optional<Separation> separateLabel(const LabelInput &label, const PlateAdjuster &adjuster)
{
    Problems problems;
    std::optional<Separation> separation = separate(label.document, adjuster.separation(), problems);
    const bool isComplete = separation && adjuster.apply(*separation, problems);
    Terminal::complain(problems, label.path);
    if (!isComplete)
        return std::nullopt;
    Terminal::warn(separation->warnings, label.path);
    return separation;
}
