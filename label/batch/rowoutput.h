// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/batch/manifestentry.h"
#include "label/labeldocument.h"
#include "label/problem.h"
#include "label/separation.h"

#include <QStringList>

#include <functional>

/// A label as it is to be printed.
struct RowLabel
{
    const LabelDocument &document; ///< without problems(); its items all lie on the page
    const Separation &separation; ///< without plates for an output that needs none
};

/// Where the labels of a batch go: into files of their own, or into one file.
class RowOutput
{
public:
    RowOutput() = default;
    virtual ~RowOutput();
    Q_DISABLE_COPY_MOVE(RowOutput)

    /// Whether labels come with their plates.
    [[nodiscard]] virtual bool needsPlates() const = 0;
    /// Whether labels lie one behind the other in one file, copies of a label included.
    [[nodiscard]] virtual bool isOneFile() const = 0;

    /// Before the first label. False, with the reason in problems, if nothing can be written.
    [[nodiscard]] virtual bool open(Problems &problems) = 0;
    /// Writes a label into files of these names, and enters them. What keeps it from being written, if
    /// anything does.
    [[nodiscard]] virtual Problems write(
        const RowLabel &label, const QStringList &names, ManifestEntry &entry)
        = 0;
    /// Whether nothing can be written any more: the disk is full, or the folder not ours.
    [[nodiscard]] virtual bool isBlocked() const = 0;
    /// After the last label, if isComplete, of the whole batch. False, with the reason in problems, if not
    /// everything is written.
    [[nodiscard]] virtual bool finish(bool isComplete, Problems &problems) = 0;

    /// Takes back what was written of a row that failed: nobody is to print what is not on record.
    virtual void takeBack(const ManifestEntry &entry) = 0;
    /// Removes the files of an entry that an earlier run has written, but for those whose paths are given to
    /// labels again.
    virtual void takeBackEarlier(
        const ManifestEntry &entry, const std::function<bool(const QString &)> &isGiven)
        = 0;
    /// Whether the files of an entry are there, and what they were.
    [[nodiscard]] virtual bool areIntact(const ManifestEntry &entry) const = 0;
};
