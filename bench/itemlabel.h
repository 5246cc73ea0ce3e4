// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "bench/batchlabel.h"
#include "items/barcode/barcodeitem.h"
#include "items/containers/groupitem.h"
#include "items/graphics/pixmapitem.h"
#include "items/shapes/rectangleitem.h"
#include "items/text/simpletextitem.h"
#include "label/itemtree.h"
#include "label/labeldocument.h"

#include <memory>
#include <vector>

/// The label of a batch as items of a document, on the page or all in a group.
class ItemLabel
{
public:
    explicit ItemLabel(bool grouped = false)
    {
        m_document.setPageSize(BatchLabel::millimetres);
        m_document.setDesignDpi(BatchLabel::dpi);
        std::vector<std::unique_ptr<Item>> items;
        addFrame(items);
        addLogo(items);
        for (const BatchLabel::TextPlace &place : BatchLabel::textPlaces)
            addText(items, place);
        addBarcode(items, 58, BatchLabel::qr);
        addBarcode(items, 20, BatchLabel::bars);
        if (grouped) {
            auto group = std::make_unique<GroupItem>();
            ItemTree::join(*group, std::move(items));
            m_document.addItem(std::move(group));
            return;
        }
        for (std::unique_ptr<Item> &item : items)
            m_document.addItem(std::move(item));
    }

    void show(const BatchLabel::Row &row)
    {
        const QStringList values = BatchLabel::valuesOf(row);
        for (std::size_t i = 0; i < m_values.size(); ++i)
            m_values[i]->setItemData(values[qsizetype(i)]);
    }

    /// Binds what show() fills to BatchLabel::columns.
    void bind()
    {
        QList<QString> places;
        for (const QString &column : BatchLabel::columns)
            places.append(QStringLiteral("${%1}").arg(column));
        for (std::size_t i = 0; i < m_values.size(); ++i)
            m_values[i]->setItemData(places[qsizetype(i)]);
    }

    [[nodiscard]] LabelDocument &document() { return m_document; }

private:
    using Items = std::vector<std::unique_ptr<Item>>;

    template <typename Type> static Type *add(Items &items, QPointF at)
    {
        auto item = std::make_unique<Type>();
        item->setPos(at);
        Type *added = item.get();
        items.push_back(std::move(item));
        return added;
    }

    static void addFrame(Items &items)
    {
        auto *frame = add<RectangleItem>(items, BatchLabel::frame.topLeft());
        frame->setItemSize(BatchLabel::frame.size());
        frame->setItemPenWidth(BatchLabel::frameWidth);
        frame->setItemFillColor(Qt::transparent);
    }

    static void addLogo(Items &items)
    {
        add<PixMapItem>(items, BatchLabel::logoAt)->setPixmap(QPixmap::fromImage(BatchLabel::logo()));
    }

    void addText(Items &items, const BatchLabel::TextPlace &place)
    {
        auto *text = add<SimpleTextItem>(items, place.topLeft);
        text->setItemFontFamily(BatchLabel::fontFamily);
        text->setItemFontSize(place.pixels);
        text->setItemBold(false);
        m_values.push_back(text);
    }

    void addBarcode(Items &items, short symbol, const QRectF &place)
    {
        auto *barcode = add<BarcodeItem>(items, place.topLeft());
        barcode->setBarcodeSymbol(symbol);
        barcode->setBarcodeHideText(true);
        barcode->setItemSize(place.size());
        m_values.push_back(barcode);
    }

    LabelDocument m_document;
    std::vector<IDatasourceItem *> m_values;
};
