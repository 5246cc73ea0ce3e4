// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/atomicfile.h"
#include "label/batch/pdflayout.h"
#include "label/batch/rowoutput.h"

#include <memory>

/// All labels in one PDF, which gets its name when it is whole. What a batch has not come to the end of
/// leaves nothing: a name never holds a part of the labels.
class PdfDocument final : public RowOutput
{
public:
    PdfDocument(const QString &path, std::unique_ptr<PdfLayout> layout, const QString &title, bool overwrite);
    ~PdfDocument() override;

    [[nodiscard]] bool needsPlates() const override { return m_layout->needsPlates(); }
    [[nodiscard]] bool isOneFile() const override { return true; }
    [[nodiscard]] bool open(Problems &problems) override;
    [[nodiscard]] Problems write(
        const RowLabel &label, const QStringList &names, ManifestEntry &entry) override;
    [[nodiscard]] bool isBlocked() const override { return m_isBlocked; }
    [[nodiscard]] bool finish(bool isComplete, Problems &problems) override;
    void takeBack(const ManifestEntry &entry) override;
    void takeBackEarlier(const ManifestEntry &, const std::function<bool(const QString &)> &) override { }
    [[nodiscard]] bool areIntact(const ManifestEntry &) const override { return false; }

private:
    [[nodiscard]] bool finishWithoutPages(Problems &problems);

    QString m_path;
    std::unique_ptr<PdfLayout> m_layout;
    QString m_title;
    bool m_overwrite;
    bool m_isBlocked = false;
    AtomicFile m_file;
    std::unique_ptr<PdfPages> m_pages; ///< of m_file, once that is open
};
