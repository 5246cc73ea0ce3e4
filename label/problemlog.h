// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"

/// Collects what is wrong with one file. It counts everything and keeps the first LabelLimits::MaxProblems,
/// so that a file made of nothing but mistakes costs no memory.
class VX_LABEL_EXPORT ProblemLog
{
public:
    explicit ProblemLog(const QString &fileName)
        : m_fileName(fileName)
    {
    }

    void add(const QString &where, const QString &what, const QString &advice = {});
    /// Adds problems of this file.
    void add(const Problems &problems);

    /// Adds a problem that would not be kept, without its words.
    void addUntold();

    /// All that were added, kept or not.
    [[nodiscard]] qsizetype count() const { return m_count; }
    /// Whether a further problem would only be counted: no need to word it well.
    [[nodiscard]] bool isFull() const;
    /// The problems that were kept, and "and 12 more problems" if there were more.
    [[nodiscard]] Problems problems() const;

private:
    QString m_fileName;
    Problems m_kept;
    qsizetype m_count = 0;
};
