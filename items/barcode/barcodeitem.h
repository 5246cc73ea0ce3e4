// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/item.h"
#include "items/core/itemproperties.h"
#include "items/interfaces/fillcoloritem.h"
#include "items/interfaces/ibarcodeitem.h"
#include "items/interfaces/idatasourceitem.h"
#include "items/interfaces/ifontitem.h"
#include "items/interfaces/itextalignitem.h"
#include "items/interfaces/textcoloritem.h"

#include <QGraphicsItem>
#include <QObject>

#include <memory>

namespace Zint {
class QZint;
}

/// A one- or two-dimensional barcode, of which some show their text beside the symbol. Nearly all of its
/// state is that of its encoder; the symbol is encoded when it is first painted or asked for after a change,
/// and copies share it. The fill is the background, the text colour that of the bars and the text; an invalid
/// fill paints nothing, an invalid text colour black.
class VX_EXPORT BarcodeItem : public QObject,
                              public QGraphicsItem,
                              public Item,
                              public FillColorItem,
                              public TextColorItem,
                              public IFontItem,
                              public ITextAlignItem,
                              public IBarcodeItem,
                              public IDatasourceItem
{
    Q_OBJECT
    Q_INTERFACES(QGraphicsItem)
    VX_GEOMETRY_PROPERTIES
    VX_DATASOURCE_PROPERTIES
    Q_PROPERTY(QColor itemTextColor READ getItemTextColor WRITE setItemTextColor)
    VX_FILL_COLOR_PROPERTY
    Q_PROPERTY(int itemFontSize READ getItemFontSize WRITE setItemFontSize)
    Q_PROPERTY(QString itemFontFamily READ getItemFontFamily WRITE setItemFontFamily)
    Q_PROPERTY(uint itemAlignment READ getItemAlignmentInt WRITE setItemAlignmentInt)
    Q_PROPERTY(bool itemBold READ getItemBold WRITE setItemBold)
    Q_PROPERTY(bool itemItalic READ getItemItalic WRITE setItemItalic)
    Q_PROPERTY(bool itemUnderline READ getItemUnderline WRITE setItemUnderline)
    Q_PROPERTY(short barcodeSymbol READ getBarcodeSymbol WRITE setBarcodeSymbol)
    Q_PROPERTY(QString barcodeText READ getBarcodeText WRITE setBarcodeText)
    Q_PROPERTY(int lineWidth READ getBarcodeOption2 WRITE setBarcodeOption2)
    Q_PROPERTY(int barcodeWhiteSpace READ getBarcodeWhiteSpace WRITE setBarcodeWhiteSpace)
    Q_PROPERTY(bool barcodeHideText READ getBarcodeHideText WRITE setBarcodeHideText)
    Q_PROPERTY(short barcodeSecurityLevel READ getBarcodeSecurityLevel WRITE setBarcodeSecurityLevel)
    Q_PROPERTY(bool barcodeTextAbove READ getBarcodeTextAbove WRITE setBarcodeTextAbove)
    Q_PROPERTY(bool barcodeShowStartStop READ getBarcodeShowStartStop WRITE setBarcodeShowStartStop)
    VX_POSITION_PROPERTIES

public:
    /// The family of the font that barcodes start with.
    static const QString defaultFontFamily;

    BarcodeItem();
    ~BarcodeItem() override;

    // QGraphicsItem
    enum { Type = MobraTypes::BarcodeShape };
    int type() const override { return Type; }
    QRectF boundingRect() const override { return sizeRect(); }
    QPainterPath shape() const override;
    QPainterPath opaqueArea() const override { return shape(); }
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget = nullptr) override;

    // Barcode
    short getBarcodeSymbol() const override;
    QString getBarcodeText() const override;
    int getBarcodeOption2() const override;
    int getBarcodeHeight() const override;
    int getBarcodeWhiteSpace() const override;
    bool getBarcodeHideText() const override;
    short getBarcodeSecurityLevel() const override;
    bool getBarcodeTextAbove() const override;
    bool getBarcodeShowStartStop() const override;
    int getBarcodeAspectRatioMode() const override { return m_aspectRatioMode; }
    QString getBarcodeEncodedText() const override;
    bool isValidInput() const override;
    bool isBarcode1D() const override;
    /// Sets what a barcode of another format holds, as it is: the second option of any symbol, and a text
    /// with marker.
    void importBarcodeProperties(int symbol, const QString &text, bool textAbove, int alignment, int fontSize,
        bool hideText, bool bold, int option2, int whiteSpace, int securityLevel);

    // Colours, font and alignment
    void setItemFillColor(const QColor &color) override;
    void setItemTextColor(const QColor &color) override;
    int getItemFontSize() const override;
    QString getItemFontFamily() const override;
    bool getItemBold() const override;
    bool getItemItalic() const override;
    bool getItemUnderline() const override;
    Qt::Alignment getItemAlignment() const override;
    void setItemAlignment(Qt::Alignment alignment) override;

    // Datasource
    QVariant getItemData() const override { return getBarcodeText(); }
    int getItemDatasourceID() const override { return getDatasourceId(); }
    QString getItemDatasourceField() const override { return getDatasourceField(); }
    bool isDatasourceConnected() const override { return getDatasourceId() >= 0; }

    // Item
    [[nodiscard]] Item *createItemCopy() override;
    bool resetItemColors(const QColor &printColor, bool keepBlack, bool keepOthers) override;
    bool resetItemColorsNegative(const QColor &printColor) override;
    QString toDescriptionString() const override;
    void saveItemToData(QDataStream &stream) override;
    void loadItemFromData(QDataStream &stream, unsigned int version) override;
    QVariantMap saveItemToJSON() override { return Item::saveItemToJSON(); }
    void loadItemFromJSON(const QVariantMap &map, unsigned int version) override;

public Q_SLOTS:
    void setBarcodeSymbol(short symbolCode) override;
    /// Ignored unless the symbol is Code 39 or PDF417.
    void setBarcodeOption2(int option) override;
    void setBarcodeHeight(int height) override;
    /// Leaves the marker of functions out.
    void setBarcodeText(const QString &text) override;
    void setBarcodeWhiteSpace(int whitespace) override;
    void setBarcodeHideText(bool hidetext) override;
    void setBarcodeSecurityLevel(short level) override;
    void setItemFontSize(int fontSize) override;
    void setItemFontFamily(const QString &fontFamily) override;
    void setItemAlignmentInt(uint align);
    void setItemBold(bool bold) override;
    void setItemItalic(bool italic) override;
    void setItemUnderline(bool underline) override;
    void setBarcodeTextAbove(bool above) override;
    void setBarcodeShowStartStop(bool show) override;
    /// 0 stretches the symbol in both directions; 1 keeps its proportions at the top left, 2 in the middle.
    void setBarcodeAspectRatio(int ratio) override;
    /// Shows a value of the datasource.
    void setItemData(const QVariant &data) override;
    void setItemDatasourceID(int id) override { setDatasourceId(id); }
    void setItemDatasourceField(const QString &field) override { setDatasourceField(field); }

Q_SIGNALS:
    void itemDataChanged(QVariant data, int datasourceId, QString field) override;
    void itemDataChanged(QVariant data, QString field);

protected:
    void announceGeometryChange() override { prepareGeometryChange(); }

private:
    void makeBarcode();
    // Parts of a record: what the symbol and the line are, and how the line looks.
    void loadLayout(QDataStream &stream);
    void loadLine(QDataStream &stream);
    /// Sets a value of the encoder and repaints the item, unless that is its value already.
    template <typename Getter, typename Setter, typename Value>
    void change(Getter getter, Setter setter, const Value &value);

    std::unique_ptr<Zint::QZint> m_encoder;
    int m_aspectRatioMode = 0;
};
