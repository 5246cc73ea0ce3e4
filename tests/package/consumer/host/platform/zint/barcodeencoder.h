// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QColor>
#include <QRectF>
#include <QString>

class QPainter;

namespace Zint {

/// A host's own barcode, of all that the library may ask of one. Like an object, it cannot be copied.
class QZint
{
public:
    QZint() = default;
    Q_DISABLE_COPY_MOVE(QZint)

    static constexpr bool IsOfTheHost = true;

    enum AspectRatioMode : int { IgnoreAspectRatio = 0, KeepAspectRatio = 1, CenterBarCode = 2 };

    QString text() const { return m_text; }
    void setText(const QString &text) { m_text = text; }
    int symbol() const { return 0; }
    void setSymbol(int) { }
    int securityLevel() const { return 0; }
    void setSecurityLevel(int) { }
    int lineWidth() const { return 0; }
    void setWidth(int) { }
    int inputMode() const { return 0; }
    void setInputMode(int) { }
    int borderType() const { return 0; }
    void setBorderType(int) { }
    int borderWidth() const { return 0; }
    void setBorderWidth(int) { }
    int lineHeight() const { return 0; }
    void setHeight(int) { }
    int whitespace() const { return 0; }
    void setWhitespace(int) { }
    int pdf417CodeWords() const { return 0; }
    void setPdf417CodeWords(int) { }
    bool hideText() const { return false; }
    void setHideText(bool) { }
    int fontSize() const { return 0; }
    void setFontSize(int) { }
    QString fontStyle() const { return {}; }
    void setFontStyle(const QString &) { }
    int textAlign() const { return 0; }
    void setTextAlign(int) { }
    QColor fgColor() const { return {}; }
    void setFgColor(const QColor &) { }
    QColor bgColor() const { return {}; }
    void setBgColor(const QColor &) { }
    bool textAbove() const { return false; }
    void setTextAbove(bool) { }
    bool showStartStop() const { return false; }
    void setShowStartStop(bool) { }
    bool fontBold() const { return false; }
    void setFontBold(bool) { }
    bool fontItalic() const { return false; }
    void setFontItalic(bool) { }
    bool fontUnderline() const { return false; }
    void setFontUnderline(bool) { }
    int error_int() const { return 0; }
    QString encodedText() const { return m_text; }
    void render(QPainter &, const QRectF &, AspectRatioMode) const { }

private:
    QString m_text;
};

} // namespace Zint
