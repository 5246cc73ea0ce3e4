// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "platform/zint/barcodesettings.h"
#include "platform/zint/barcodestyle.h"

#include <QColor>
#include <QString>

#include <memory>

class QPainter;
class QRectF;
class QTransform;

namespace Zint {

struct EncodedSymbol;
enum class Edges;
struct ModuleDots;
struct SymbolGeometry;

/// A barcode: what is encoded, how, and how it looks. Values are kept as they are set, however odd. The
/// symbol is encoded when it is first asked for after a change, and copies share it. As with other values,
/// two threads must not use the same object, not even to read it; they may use two copies.
class QZint
{
public:
    /// How render() fits the symbol into its rectangle.
    enum AspectRatioMode : int {
        IgnoreAspectRatio = 0, ///< stretched in both directions; so is any other number
        KeepAspectRatio = 1, ///< in its own proportions, at the top left
        CenterBarCode = 2, ///< in its own proportions, in the middle
    };

    [[nodiscard]] QString text() const { return m_settings.text; }
    void setText(const QString &text) { change(&BarcodeSettings::text, text); }

    /// The number of the symbology. Unknown ones are encoded as Code 128, with a warning.
    [[nodiscard]] int symbol() const { return m_settings.symbol; }
    void setSymbol(int symbol) { change(&BarcodeSettings::symbol, symbol); }

    /// The first option of a symbology, often how much damage the symbol survives; -1: chosen by the encoder.
    [[nodiscard]] int securityLevel() const { return m_settings.securityLevel; }
    void setSecurityLevel(int level) { change(&BarcodeSettings::securityLevel, level); }

    /// The second option of a symbology, often a number of columns, a size or a check digit; 0: chosen by the
    /// encoder.
    [[nodiscard]] int lineWidth() const { return m_settings.width; }
    void setWidth(int width) { change(&BarcodeSettings::width, width); }

    /// 0 bytes, 1 Unicode, 2 GS1, and flags of the encoder.
    [[nodiscard]] int inputMode() const { return m_settings.inputMode; }
    void setInputMode(int mode) { change(&BarcodeSettings::inputMode, mode); }

    /// 0 none, 1 bars above and below the symbol, 2 a box.
    [[nodiscard]] int borderType() const { return m_settings.borderType; }
    void setBorderType(int type) { change(&BarcodeSettings::borderType, type); }

    /// In modules.
    [[nodiscard]] int borderWidth() const { return m_settings.borderWidth; }
    void setBorderWidth(int width) { change(&BarcodeSettings::borderWidth, width); }

    /// The height of bars in modules, of which symbols of square modules take no notice; 0: the usual one.
    [[nodiscard]] int lineHeight() const { return m_settings.height; }
    void setHeight(int height) { change(&BarcodeSettings::height, height); }

    /// Left and right of the symbol, in modules.
    [[nodiscard]] int whitespace() const { return m_settings.whitespace; }
    void setWhitespace(int whitespace) { change(&BarcodeSettings::whitespace, whitespace); }

    /// Kept, and without effect.
    [[nodiscard]] int pdf417CodeWords() const { return m_pdf417CodeWords; }
    void setPdf417CodeWords(int codeWords) { m_pdf417CodeWords = codeWords; }

    /// Without the human-readable line.
    [[nodiscard]] bool hideText() const { return m_style.hideText; }
    void setHideText(bool hide) { m_style.hideText = hide; }

    /// The line's font size in points; a point is 4/3 units of the painter, whatever its resolution.
    [[nodiscard]] int fontSize() const { return m_style.fontSize; }
    void setFontSize(int size) { m_style.fontSize = size; }

    /// The line's font family.
    [[nodiscard]] QString fontStyle() const { return m_style.fontFamily; }
    void setFontStyle(const QString &family) { m_style.fontFamily = family; }

    /// Qt's alignment flags, of which the line follows the horizontal ones.
    [[nodiscard]] int textAlign() const { return m_style.textAlign; }
    void setTextAlign(int align) { m_style.textAlign = align; }

    /// The colour of bars and line; an invalid one paints black.
    [[nodiscard]] QColor fgColor() const { return m_style.foreground; }
    void setFgColor(const QColor &color) { m_style.foreground = color; }

    /// An invalid or wholly transparent one paints nothing.
    [[nodiscard]] QColor bgColor() const { return m_style.background; }
    void setBgColor(const QColor &color) { m_style.background = color; }

    /// The line above the symbol instead of below it.
    [[nodiscard]] bool textAbove() const { return m_style.textAbove; }
    void setTextAbove(bool above) { m_style.textAbove = above; }

    /// With the asterisks of Code 39 in the line.
    [[nodiscard]] bool showStartStop() const { return m_style.showStartStop; }
    void setShowStartStop(bool show) { m_style.showStartStop = show; }

    [[nodiscard]] bool fontBold() const { return m_style.bold; }
    void setFontBold(bool bold) { m_style.bold = bold; }

    [[nodiscard]] bool fontItalic() const { return m_style.italic; }
    void setFontItalic(bool italic) { m_style.italic = italic; }

    [[nodiscard]] bool fontUnderline() const { return m_style.underline; }
    void setFontUnderline(bool underline) { m_style.underline = underline; }

    /// 0, a warning (2 to 4: the symbol is drawn), or an error: 5 text too long, 6 text invalid, 7 check
    /// digit wrong, 8 option invalid, and higher.
    [[nodiscard]] int error_int() const;
    /// Whether another barcode has all settings that the encoded symbol depends on.
    [[nodiscard]] bool encodesLike(const QZint &other) const { return m_settings == other.m_settings; }
    /// Takes over what a barcode has encoded that encodesLike() this one.
    void shareEncoding(const QZint &other) { m_encoded = other.m_encoded; }

    /// The encoder's own words about that; empty without an error or warning, and for texts that it is not
    /// asked about because they would harm it.
    [[nodiscard]] QString errorText() const;

    /// What people read beside the symbol, with check digits and brackets; empty after an error and for
    /// symbols without such a text.
    [[nodiscard]] QString encodedText() const;

    /// Paints background, line and symbol into the rectangle, after an error the background alone. Bars have
    /// hard edges. Paints nothing if the painter is not active, or if the rectangle is empty, reaches beyond
    /// ±10,000,000 or has a number that is not finite. The painter stays as it was.
    void render(QPainter &painter, const QRectF &rect, AspectRatioMode mode) const;

private:
    friend std::shared_ptr<const SymbolGeometry> geometryOf(const QZint &barcode);
    friend void renderOnDots(
        const QZint &barcode, QPainter &painter, const QRectF &rect, AspectRatioMode mode);
    friend ModuleDots moduleDots(
        const QZint &barcode, const QRectF &rect, AspectRatioMode mode, const QTransform &toDots);

    template <typename Value> void change(Value BarcodeSettings::*field, const Value &value)
    {
        if (m_settings.*field == value)
            return;
        m_settings.*field = value;
        m_encoded.reset();
    }
    const std::shared_ptr<const EncodedSymbol> &encoded() const;
    void paint(QPainter &painter, const QRectF &rect, AspectRatioMode mode, Edges edges) const;

    BarcodeSettings m_settings;
    BarcodeStyle m_style;
    int m_pdf417CodeWords = 0;
    mutable std::shared_ptr<const EncodedSymbol> m_encoded; ///< null after a change
};

} // namespace Zint
