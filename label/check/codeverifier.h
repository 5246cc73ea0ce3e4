// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/separation.h"

#include <QSet>

#include <memory>

class BarcodeItem;
class DecoderProcess;

/// Reads the barcodes of a label back from its plates, as a scanner sees them: all inks together on the label
/// stock, in red light, and where that shows too little in white light.
class VX_LABEL_EXPORT CodeVerifier
{
public:
    /// Whether this build has a reader of barcodes.
    [[nodiscard]] static bool isPossible();
    /// Why it is not, and what to do.
    [[nodiscard]] static Problem unavailable();

    CodeVerifier();
    ~CodeVerifier();
    Q_DISABLE_COPY_MOVE(CodeVerifier)

    /// One problem for each visible barcode that cannot be read, or whose content is not what the item was
    /// given. `where` is its place in the document, whose items all lie on the page. Those that the encoder
    /// has refused are left out, and plates of a negative are read as the positive that becomes of them.
    [[nodiscard]] Problems verify(
        const LabelDocument &document, const Separation &separation, const SeparationOptions &options);
    /// What could not be verified since the last call, and why: each symbology once in the life of the
    /// verifier.
    [[nodiscard]] Problems takeNotes();

private:
    class Scan;

    [[nodiscard]] std::optional<Problem> verify(
        const BarcodeItem &barcode, const PrintedBarcode &printed, const Scan &scan);
    /// The content of the barcode, if it can be read in any way; else anything that was read.
    [[nodiscard]] std::optional<QString> bestReading(
        const BarcodeItem &barcode, const QImage &seen, const QByteArray &formats);
    /// Says that a barcode needs white light.
    void noteLight(const BarcodeItem &barcode, const PrintedBarcode &printed, bool isRed);
    void note(const QString &about, const Problem &problem);

    std::unique_ptr<DecoderProcess> m_decoder;
    QSet<QString> m_noted;
    Problems m_notes;
};
