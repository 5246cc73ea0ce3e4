// SPDX-License-Identifier: BSD-3-Clause
#include "label/check/codecontent.h"

#include "items/barcode/barcodeitem.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

/// What becomes of the text.
enum class Form {
    Same,
    Capitals, ///< the symbology has no small letters
    Even, ///< digits, as many as make pairs
    Retail, ///< EAN of 8 or 13 digits, with an add-on behind a plus, which is not read
    RetailWhole, ///< the same with its check digit
    Isbn,
    UpcE,
    Gs1, ///< without the brackets and the ends of values
    Gs1Brackets, ///< with round brackets
    Hibc, ///< a plus, the text in capitals, a check character
    Dpd,
    Code32,
    Digits ///< zeros in front, and the check digits
};

struct Reading
{
    int symbol; ///< the encoder's number
    const char *formats;
    Form form = Form::Same;
    const char *prefix = ""; ///< of Digits
    int digits = 0; ///< of Digits, without the check digit
    bool isModulo10 = false; ///< the check digit of Digits is that of GS1; others are not calculated
};

constexpr std::array readings {
    Reading { 3, "ITF", Form::Even },
    Reading { 8, "Code39", Form::Capitals },
    Reading { 9, "Code39Extended" },
    Reading { 13, "EAN-13|EAN-8", Form::Retail },
    Reading { 14, "EAN-13|EAN-8", Form::RetailWhole },
    Reading { 16, "Code128", Form::Gs1 },
    Reading { 18, "Codabar", Form::Capitals },
    Reading { 20, "Code128" },
    Reading { 21, "ITF", Form::Digits, "", 13 },
    Reading { 22, "ITF", Form::Digits, "", 11 },
    Reading { 25, "Code93" },
    Reading { 29, "DataBar", Form::Digits, "", 13, true },
    Reading { 31, "DataBarExpanded", Form::Gs1Brackets },
    Reading { 34, "UPC-A", Form::Digits, "", 11, true },
    Reading { 35, "UPC-A", Form::Digits, "", 11, true },
    Reading { 37, "UPC-E", Form::UpcE },
    Reading { 38, "UPC-E", Form::UpcE },
    Reading { 50, "Code39", Form::Capitals },
    Reading { 52, "Code39", Form::Digits, "-", 7 },
    Reading { 55, "PDF417" },
    Reading { 56, "PDF417" },
    Reading { 57, "MaxiCode" },
    Reading { 58, "QRCode" },
    Reading { 60, "Code128" },
    Reading { 69, "EAN-13", Form::Isbn },
    Reading { 71, "DataMatrix" },
    Reading { 72, "Code128", Form::Digits, "01", 13, true },
    Reading { 73, "Code39", Form::Capitals },
    Reading { 75, "Code128", Form::Digits, "00", 17, true },
    Reading { 79, "DataBar", Form::Digits, "", 13, true },
    Reading { 80, "DataBar", Form::Digits, "", 13, true },
    Reading { 81, "DataBarExpanded", Form::Gs1Brackets },
    Reading { 89, "ITF", Form::Digits, "", 13, true },
    Reading { 92, "Aztec" },
    Reading { 96, "Code128", Form::Dpd },
    Reading { 97, "MicroQRCode" },
    Reading { 98, "Code128", Form::Hibc },
    Reading { 99, "Code39", Form::Hibc },
    Reading { 102, "DataMatrix", Form::Hibc },
    Reading { 104, "QRCode", Form::Hibc },
    Reading { 106, "PDF417", Form::Hibc },
    Reading { 112, "Aztec", Form::Hibc },
    Reading { 129, "Code39", Form::Code32 },
    Reading { 143, "QRCode" },
};

const Reading *readingOf(const BarcodeItem &barcode)
{
    const auto *found = std::ranges::find(readings, barcode.getBarcodeSymbol(), &Reading::symbol);
    return found == readings.end() ? nullptr : found;
}

QString padded(const QString &digits, int length)
{
    return digits.rightJustified(length, u'0');
}

/// With the check digit of GS1: the digits weigh 3 and 1 in turn, 3 the last, and the sum is to end in 0 (GS1
/// General Specifications, "Check digit calculations").
QString withModulo10(const QString &digits)
{
    int sum = 0;
    for (qsizetype i = 0; i < digits.size(); ++i)
        sum += digits[i].digitValue() * ((digits.size() - i) % 2 == 1 ? 3 : 1);
    return digits + QString::number((10 - sum % 10) % 10);
}

/// The text as the tables above have it: of digits, without the marks that the encoder takes and leaves out.
QString plainDigits(const QString &text)
{
    return QString(text).remove(u"[01]"_s).remove(u'-').remove(u' ');
}

bool isDigits(const Reading &reading, const QString &text, const QString &read)
{
    const QString prefix = QString::fromLatin1(reading.prefix);
    const QString digits = plainDigits(text);
    if (digits.size() > reading.digits)
        return read == prefix + digits;
    const QString body = prefix + padded(digits, reading.digits);
    return reading.isModulo10 ? read == prefix + withModulo10(padded(digits, reading.digits))
                              : read.size() == body.size() + 1 && read.startsWith(body);
}

/// EAN-8 up to 8 digits, EAN-13 beyond.
bool isRetail(const QString &text, const QString &read, bool isWhole)
{
    const QString digits = text.section(u'+', 0, 0).trimmed();
    const int length = digits.size() <= 8 ? 8 : 13;
    if (isWhole || digits.size() == length)
        return read == padded(digits, length);
    return read == withModulo10(padded(digits, length - 1));
}

/// Books have numbers of 9, 10 or 13 digits, the older two without 978 and with another check digit.
bool isIsbn(const QString &text, const QString &read)
{
    const QString digits = plainDigits(text).section(u'+', 0, 0);
    return digits.size() == 13 ? read == digits
                               : read == withModulo10(u"978"_s + padded(digits, 10).first(9));
}

/// The check digit is that of the UPC-A that it stands for, without which the reader reads nothing.
bool isUpcE(const QString &text, const QString &read)
{
    const QString digits = text.section(u'+', 0, 0).trimmed();
    return digits.size() == 8 ? read == digits : read.size() == 8 && read.first(7) == padded(digits, 7);
}

/// Nine digits, of which the last is a check digit (the sum of those at odd places and of the digits of the
/// doubles of the others), as a number to the base of 32.
bool isCode32(const QString &text, const QString &read)
{
    const QString figures = u"0123456789BCDFGHJKLMNPQRSTUVWXYZ"_s;
    const QString digits = padded(text, 8);
    int sum = 0;
    for (qsizetype i = 0; i < digits.size(); ++i) {
        const int weighed = digits[i].digitValue() * (i % 2 == 0 ? 1 : 2);
        sum += weighed / 10 + weighed % 10;
    }
    qint64 rest = (digits + QString::number(sum % 10)).toLongLong();
    QString expected;
    for (int i = 0; i < 6; ++i, rest /= 32)
        expected.prepend(figures[rest % 32]);
    return read == expected;
}

QString withoutBrackets(const QString &text)
{
    static const QRegularExpression identifiers(u"\\[([0-9]+)\\]"_s);
    return QString(text).replace(identifiers, u"\\1"_s);
}

QString withRoundBrackets(const QString &text)
{
    static const QRegularExpression identifiers(u"\\[([0-9]+)\\]"_s);
    return QString(text).replace(identifiers, u"(\\1)"_s);
}

/// Asked for, Code 39 has a check character behind the text.
bool isCapitals(const BarcodeItem &barcode, const QString &text, const QString &read)
{
    const QString capitals = text.toUpper();
    return read == capitals
        || (barcode.getBarcodeOption2() > 0 && read.size() == capitals.size() + 1
            && read.startsWith(capitals));
}

bool isHibc(const QString &text, const QString &read)
{
    const QString body = u'+' + text.toUpper();
    return read.size() == body.size() + 1 && read.startsWith(body);
}

/// Readers take no pairs of less than six digits, which a part of longer bars may look like, and no add-on of
/// up to five without its EAN.
bool isLongEnough(const Reading &reading, const QString &text)
{
    constexpr qsizetype fewestOfPairs = 5; // a zero makes them six
    constexpr qsizetype longestAddOn = 5;
    if (reading.form == Form::Even)
        return text.size() >= fewestOfPairs;
    const bool isRetail = reading.form == Form::Retail || reading.form == Form::RetailWhole;
    return !isRetail || text.section(u'+', 0, 0).size() > longestAddOn;
}

} // namespace

bool CodeContent::isKnown(const BarcodeItem &barcode)
{
    return readingOf(barcode) != nullptr;
}

std::optional<QByteArray> CodeContent::formatsOf(const BarcodeItem &barcode)
{
    const Reading *reading = readingOf(barcode);
    return reading && isLongEnough(*reading, barcode.getBarcodeText())
        ? std::optional(QByteArray(reading->formats))
        : std::nullopt;
}

bool CodeContent::isThatOf(const BarcodeItem &barcode, const QString &read)
{
    const Reading *reading = readingOf(barcode);
    const QString text = barcode.getBarcodeText();
    switch (reading ? reading->form : Form::Same) {
    case Form::Same:
        return read == text;
    case Form::Capitals:
        return isCapitals(barcode, text, read);
    case Form::Even:
        return read == padded(text, int(text.size() + text.size() % 2));
    case Form::Retail:
        return isRetail(text, read, false);
    case Form::RetailWhole:
        return isRetail(text, read, true);
    case Form::Isbn:
        return isIsbn(text, read);
    case Form::UpcE:
        return isUpcE(text, read);
    case Form::Gs1:
        return QString(read).remove(QChar(29)) == withoutBrackets(text);
    case Form::Gs1Brackets:
        return read == withRoundBrackets(text);
    case Form::Hibc:
        return isHibc(text, read);
    case Form::Dpd:
        return read == text.toUpper() || read == u'%' + text.toUpper();
    case Form::Code32:
        return isCode32(text, read);
    case Form::Digits:
        return isDigits(*reading, text, read);
    }
    return false;
}
