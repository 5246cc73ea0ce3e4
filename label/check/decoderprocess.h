// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/vxlabelexport.h"

#include <QByteArray>
#include <QImage>
#include <QStringList>

#include <optional>
#include <sys/types.h>

/// The reader of barcodes in a process of its own, which is made from this one when it is first asked: a
/// picture on which the reader aborts, or which keeps it busy, is one that cannot be read, and nothing else.
class VX_LABEL_EXPORT DecoderProcess
{
public:
    DecoderProcess() = default;
    ~DecoderProcess();
    Q_DISABLE_COPY_MOVE(DecoderProcess)

    /// The text of the barcode on a picture of QImage::Format_Grayscale8 in black and white, and, if it is
    /// another one, what scanners may guess; nothing if it cannot be read. The formats are those of
    /// CodeDecoder.
    [[nodiscard]] QStringList read(const QImage &picture, const QByteArray &formats);

private:
    [[nodiscard]] bool start();
    void stop();
    [[nodiscard]] bool sendQuestion(const QImage &picture, const QByteArray &formats) const;
    /// Nothing if no answer comes.
    [[nodiscard]] std::optional<QStringList> answer() const;
    [[nodiscard]] std::optional<QString> receiveText(qint32 size) const;

    pid_t m_process = -1;
    int m_socket = -1; ///< to the process; -1 without one
};
