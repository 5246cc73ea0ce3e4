// SPDX-License-Identifier: BSD-3-Clause
// A red square with a black outline: painted, then turned onto its corner, and separated into one plate for
// each ink.
#include "items/shapes/rectangleitem.h"
#include "label/proof.h"

#include <QApplication>
#include <QPainter>
#include <QStyleOptionGraphicsItem>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);

    auto square = std::make_unique<RectangleItem>();
    square->setItemSize(QSizeF(300, 300));
    square->setItemFillColor(Qt::red);
    square->setItemPenWidth(24);

    QImage picture(300, 300, QImage::Format_RGB32); // as on screen
    QPainter painter(&picture);
    const QStyleOptionGraphicsItem option;
    square->paint(&painter, &option);
    bool saved = picture.save(QStringLiteral("hello.item.png"));

    LabelDocument label; // 100 mm × 50 mm at 300 dpi, on white paper
    label.setInks({ { QStringLiteral("black"), Qt::black }, { QStringLiteral("red"), Qt::red } });
    square->setPos(440, 145);
    square->setItemRotation(45);
    label.addItem(std::move(square));

    Problems problems;
    const std::optional<Separation> separation = separate(label, { .dpi = 300 }, problems);
    if (!separation)
        return 1;
    saved = proofOf(*separation).save(QStringLiteral("hello.proof.png")) && saved;
    for (const Plate &plate : separation->plates)
        saved = plate.image.save(QStringLiteral("hello.%1.png").arg(plate.ink.name)) && saved;
    return saved ? 0 : 1;
}
