// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/classfactory.h"
#include "items/core/item.h"
#include "label/documentfile.h"

#include <QApplication>
#include <QGraphicsItem>
#include <QImage>
#include <QPainter>
#include <QStyleOptionGraphicsItem>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <utility>
#include <vector>

/// What all fuzz targets share: an application without a screen, items of every class, and the checks.
namespace Fuzz {

/// To be called at the start of every run; the application is made by the first.
inline void start()
{
    static int argc = 1;
    static char name[] = "fuzz";
    static char *argv[] = { name, nullptr };
    static const bool offscreen = qputenv("QT_QPA_PLATFORM", "offscreen");
    // Never deleted: when the program ends, what the application would clean up is gone already.
    static const auto *const application = new QApplication(argc, argv);
    // Warnings about odd numbers are no findings, and writing them takes most of the time.
    static const auto handler
        = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    Q_UNUSED(offscreen);
    Q_UNUSED(application);
    Q_UNUSED(handler);
}

/// A finding unless the condition holds.
inline void require(bool condition)
{
    if (!condition)
        std::abort();
}

/// A new item of the class that a byte chooses: the low byte of its type code, which stays what it is when
/// classes are added; any other byte chooses one as well.
inline std::unique_ptr<Item> itemOf(std::uint8_t choice)
{
    const auto made = [](unsigned int code) {
        return std::unique_ptr<Item>(ClassFactory().create(static_cast<MobraTypes::ShapeType>(code)));
    };
    constexpr unsigned int firstCode = 0x10000;
    static const std::vector<unsigned int> codes = [&made] {
        std::vector<unsigned int> known;
        for (unsigned int code = firstCode; code < firstCode + 0x100; ++code) {
            if (made(code))
                known.push_back(code);
        }
        return known;
    }();
    std::unique_ptr<Item> item = made(firstCode + choice);
    return item ? std::move(item) : made(codes[choice % codes.size()]);
}

/// Of all classes only the layer has a record without a byte.
inline bool isLayer(Item &item)
{
    const auto *graphics = dynamic_cast<QGraphicsItem *>(&item);
    require(graphics != nullptr);
    return graphics->type() == MobraTypes::LayerShape;
}

/// Paints the item as a scene would, selected, into a small picture.
inline void paint(Item &item)
{
    auto *graphics = dynamic_cast<QGraphicsItem *>(&item);
    require(graphics != nullptr);
    QImage image(64, 64, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setTransform(graphics->sceneTransform());
    QStyleOptionGraphicsItem option;
    option.state = QStyle::State_Selected;
    option.exposedRect = graphics->boundingRect();
    graphics->paint(&painter, &option, nullptr);
}

/// A document that was accepted can be saved, and is the same when it is read again.
inline void requireRoundTrip(const LabelDocument &document, DocumentFormat format)
{
    Problems problems;
    const QByteArray saved = DocumentFile::toData(document, format, problems);
    require(!saved.isEmpty() && problems.isEmpty());
    const LoadResult again = DocumentFile::loadFromData(saved, {});
    require(again.document.has_value() && again.problems.isEmpty());
    require(DocumentFile::toData(*again.document, format, problems) == saved);
}

} // namespace Fuzz
