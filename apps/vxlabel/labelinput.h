// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "apps/vxlabel/exitcode.h"
#include "label/adjust/plateadjuster.h"
#include "label/documentfile.h"
#include "label/separation.h"

#include <QString>

#include <optional>

/// A label as the commands work on it.
struct LabelInput
{
    QString path;
    LabelDocument document;
    /// Ok, or SomeFailed when broken items were left out.
    ExitCode outcome;
};

/// Loads a label and complains about all that is wrong with it; nothing when it is refused.
[[nodiscard]] std::optional<LabelInput> loadLabel(const std::string &path, BrokenItems broken);

/// How a label is separated and its plates adjusted; nothing, with complaints, for wrong usage.
[[nodiscard]] std::optional<PlateAdjuster> adjusterFor(
    const LabelInput &label, const SeparationOptions &options, const PrintAdjustment &adjustment);

/// Separates a label, with its complaints and warnings; nothing when it cannot be printed.
[[nodiscard]] std::optional<Separation> separateLabel(const LabelInput &label, const PlateAdjuster &adjuster);
