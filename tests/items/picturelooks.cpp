// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/pixmapitem.h"
#include "tests/items/looks.h"

using namespace Qt::StringLiterals;

namespace {

using Change = std::function<void(PixMapItem &)>;

void nothing(PixMapItem & /*picture*/) { }

/// A frame of red around quarters of which no two are alike: blue, clear, half transparent yellow and black.
QPixmap sample()
{
    QImage image(8, 6, QImage::Format_ARGB32);
    image.fill(QColor(0xC0, 0x20, 0x20));
    const QColor quarters[] = { Qt::blue, Qt::transparent, QColor(0xFF, 0xE0, 0x60, 0x80), Qt::black };
    for (int y = 1; y < 5; ++y) {
        for (int x = 1; x < 7; ++x)
            image.setPixelColor(x, y, quarters[(y / 3) * 2 + x / 4]);
    }
    return QPixmap::fromImage(image);
}

/// A picture of 8 x 6 pixels stretched over the item, changed further.
Look pictured(const QByteArray &name, const Change &change = nothing, Look::Place place = Look::Alone)
{
    const auto show = [change](Item &item) {
        auto &picture = dynamic_cast<PixMapItem &>(item);
        const QSizeF size = picture.getItemSize();
        picture.pixmapImportActions(sample());
        picture.setItemSizeOnUpdate(size);
        change(picture);
    };
    return { name, show, place };
}

} // namespace

QList<Look> pictureLooks()
{
    return {
        { "new", [](Item & /*item*/) {} },
        pictured("stretched"),
        pictured("selected", nothing, Look::Selected),
        pictured("selected-in-group", nothing, Look::SelectedInGroup),
        pictured("mirrored", [](auto &picture) { picture.setItemHorizontalMirror(true); }),
        pictured("upside-down", [](auto &picture) { picture.setItemVerticalMirror(true); }),
        pictured("both-mirrors",
            [](auto &picture) {
                picture.setItemHorizontalMirror(true);
                picture.setItemVerticalMirror(true);
            }),
        pictured("natural-size", [](auto &picture) { picture.setItemSize(QSizeF(8.0, 6.0)); }),
        pictured("narrow", [](auto &picture) { picture.setItemSize(QSizeF(16.0, 48.0)); }),
        pictured("half-dots", [](auto &picture) { picture.moveBy(0.5, 0.5); }),
        pictured("turned",
            [](auto &picture) {
                picture.setItemSize(QSizeF(32.0, 24.0));
                picture.moveBy(24.0, 8.0);
                picture.setItemRotation(30.0);
            }),
        pictured("mirrored-and-turned",
            [](auto &picture) {
                picture.setItemSize(QSizeF(32.0, 24.0));
                picture.moveBy(24.0, 8.0);
                picture.setItemHorizontalMirror(true);
                picture.setItemRotation(90.0);
            }),
        pictured("not-loaded", [](auto &picture) { picture.reloadItemFromFile("/nowhere/at.all"); }),
    };
}
