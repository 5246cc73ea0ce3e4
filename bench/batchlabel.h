// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QImage>
#include <QRectF>
#include <QString>
#include <QStringList>

#include <array>

/// The label of a batch: 100 mm × 50 mm with a frame, three texts, a QR Code of 47 characters, a Code 128 of
/// 16 and a logo. Its places are in dots of 300 dpi.
namespace BatchLabel {

inline constexpr double dpi = 300.0;
inline constexpr QSizeF millimetres(100.0, 50.0);
inline constexpr QRectF frame(20, 20, 1140, 550);
inline constexpr int frameWidth = 4;
inline constexpr QRectF qr(60, 60, 290, 290);
inline constexpr QRectF bars(400, 390, 700, 150);
inline constexpr QPointF logoAt(60, 390);
inline constexpr QSize logoSize(290, 150);

struct TextPlace
{
    QPointF topLeft;
    int pixels; ///< of the font
};

inline constexpr std::array<TextPlace, 3> textPlaces { { { { 400, 60 }, 64 }, { { 400, 160 }, 48 },
    { { 400, 250 }, 48 } } };
inline const QString fontFamily = QStringLiteral("DejaVu Sans");

/// What changes from label to label.
struct Row
{
    std::array<QString, 3> texts;
    QString qr; ///< of 47 characters
    QString bars; ///< of 16 characters
};

inline Row rowOf(int number)
{
    const QString digits = QStringLiteral("%1").arg(number, 7, 10, QLatin1Char('0'));
    return { { QStringLiteral("Part ") + digits, QStringLiteral("Hexagon bolt M8 x 40"),
                 QStringLiteral("Shelf %1, box %2").arg(number % 97).arg(number % 1013) },
        QStringLiteral("https://parts.example.org/item/%1?lot=2026")
            .arg(digits)
            .leftJustified(47, QLatin1Char('0')),
        QStringLiteral("PART-%1-%2").arg(digits).arg(number % 1000, 3, 10, QLatin1Char('0')) };
}

/// The names of a row's values.
inline const QStringList columns { QStringLiteral("part"), QStringLiteral("name"), QStringLiteral("place"),
    QStringLiteral("qr"), QStringLiteral("bars") };

inline QStringList valuesOf(const Row &row)
{
    return { row.texts[0], row.texts[1], row.texts[2], row.qr, row.bars };
}

/// Rings and a bar, in black, white and red.
inline QImage logo()
{
    QImage picture(logoSize, QImage::Format_RGB32);
    const QPoint centre = QRect(QPoint(), logoSize).center();
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QPoint way = QPoint(x, y) - centre;
            const int ring = QPoint::dotProduct(way, way) / 900 % 2;
            picture.setPixel(x, y, y > 130 ? 0xFFD01020 : ring ? 0xFF000000 : 0xFFFFFFFF);
        }
    }
    return picture;
}

} // namespace BatchLabel
