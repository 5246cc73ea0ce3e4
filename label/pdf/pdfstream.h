// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QIODevice>
#include <QSizeF>
#include <QString>

#include <utility>
#include <vector>

/// What lies between Qt's PDF writer and the device that the file goes to. Qt rounds pages to whole points
/// and notes the time of day: this writes the exact page and the time it is given in their place, and moves
/// the table of objects at the file's end accordingly. Everything else passes as it is.
class PdfStream : public QIODevice
{
public:
    /// The target is open for writing, and outlives the stream. Without a valid time, the file has none.
    PdfStream(QIODevice &target, const QDateTime &created);

    /// The page that is written next: its size in points, and what Qt takes it for.
    void setPageSize(QSizeF exact, QSizeF rounded);
    /// Hands on what waits. Whether everything has been written, and the pages are of their exact sizes.
    [[nodiscard]] bool finish(int pages);
    [[nodiscard]] bool hasFailed() const { return m_failed; }
    /// Why, for a person; the first reason.
    [[nodiscard]] QString failure() const { return m_failure; }

    [[nodiscard]] bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 size) override;
    qint64 writeData(const char *data, qint64 size) override;

private:
    [[nodiscard]] QByteArray edited(const QByteArray &piece);
    [[nodiscard]] QByteArray withExactPage(const QByteArray &piece);
    [[nodiscard]] QByteArray withoutZone(const QByteArray &piece);
    [[nodiscard]] QByteArray moved(const QByteArray &offset) const;
    void fail(const QString &why);
    void put(const char *data, qint64 size);
    void flush();

    QIODevice &m_target;
    QByteArray m_date; ///< "\n/CreationDate (…)\n", or what stands for none
    QByteArray m_waiting;
    QSizeF m_exact;
    QSizeF m_rounded;
    qint64 m_position = 0; ///< in the file as Qt believes it to be
    qint64 m_growth = 0; ///< how much longer the file is than that
    std::vector<std::pair<qint64, qint64>> m_moves; ///< from a position on, the growth
    int m_pages = 0;
    bool m_inZone = false;
    bool m_inTable = false;
    bool m_inTail = false;
    bool m_failed = false;
    QString m_failure;
};
