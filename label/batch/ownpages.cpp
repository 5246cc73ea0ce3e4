// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/ownpages.h"

bool OwnPages::add(PdfPages &pages, const RowLabel &label, ManifestEntry &entry, Problems &problems)
{
    const qint64 before = pages.count();
    const bool isAdded = m_labels.add(pages, label, problems);
    entry.addPages(before + 1, pages.count());
    return isAdded;
}
