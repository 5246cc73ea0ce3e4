// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QHashFunctions>

/// Lets hash tables that come into being meanwhile have the same order in every process: Qt writes the fonts
/// of a PDF in the order of such a table. Tables that exist, and those of other threads, work as before.
class StableHashes
{
public:
    StableHashes()
        : m_seeded(QHashSeed::globalSeed() != 0)
    {
        if (m_seeded)
            QHashSeed::setDeterministicGlobalSeed();
    }
    ~StableHashes()
    {
        if (m_seeded)
            QHashSeed::resetRandomGlobalSeed();
    }
    Q_DISABLE_COPY_MOVE(StableHashes)

private:
    bool m_seeded;
};
