// SPDX-License-Identifier: BSD-3-Clause
// A red square that stands on its corner, with a black outline: one plate for each ink, and the proof.
#include "items/shapes/rectangleitem.h"
#include "label/proof.h"

#include <QApplication>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);

    LabelDocument label; // 100 mm × 50 mm at 300 dpi, on white paper
    label.setInks({ { QStringLiteral("black"), Qt::black }, { QStringLiteral("red"), Qt::red } });

    auto diamond = std::make_unique<RectangleItem>();
    diamond->setItemSize(QSizeF(300, 300));
    diamond->setPos(440, 145);
    diamond->setItemRotation(45);
    diamond->setItemFillColor(Qt::red);
    diamond->setItemPenWidth(24);
    label.addItem(std::move(diamond));

    Problems problems;
    const std::optional<Separation> separation = separate(label, { .dpi = 300 }, problems);
    if (!separation)
        return 1;
    bool saved = proofOf(*separation).save(QStringLiteral("hello.proof.png"));
    for (const Plate &plate : separation->plates)
        saved = plate.image.save(QStringLiteral("hello.%1.png").arg(plate.ink.name)) && saved;
    return saved ? 0 : 1;
}
