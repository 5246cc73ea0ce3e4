// SPDX-License-Identifier: BSD-3-Clause
#include "label/recordvalues.h"

#include "label/itemvalue.h"

#include <QByteArrayView>
#include <QtEndian>

#include <algorithm>
#include <bit>
#include <span>

using namespace Qt::StringLiterals;

namespace {

/// A stretch of a record: so many bytes without a number; a text or bytes of any number, which begin with
/// their length; a picture, which is a flag and, if that is set, a PNG file; numbers in double precision
/// under one key; or a flag and, unless it is set, a number.
struct Field
{
    enum Kind { Bytes, Text, Data, Picture, Numbers, NumberUnless };

    Kind kind;
    int count = 1;
    const char *key = nullptr;
    unsigned int sinceVersion = 1;
};

constexpr Field bytes(int count, unsigned int sinceVersion = 1)
{
    return { Field::Bytes, count, nullptr, sinceVersion };
}

constexpr Field text(const char *key = "")
{
    return { Field::Text, 1, key };
}

constexpr Field number(const char *key)
{
    return { Field::Numbers, 1, key };
}

constexpr Field picture()
{
    return { Field::Picture };
}

constexpr int colorBytes = 11;
constexpr int penBytes = colorBytes + 2 + 3 * 4;
constexpr int brushBytes = 2 + colorBytes;
constexpr int mirrorBytes = 3;
constexpr unsigned int mirrorsSinceVersion = 6;
constexpr unsigned int screenFactorSinceVersion = 2;
constexpr unsigned int symbolFlagsSinceVersion = 4;

// What the bases write, with the pen at the end.
constexpr Field outlined[] = {
    bytes(2 + 4), // id, flags
    bytes(mirrorBytes, mirrorsSinceVersion),
    number("itemZValue"),
    bytes(4 + 1), // graphics-item flags, visible
    number("itemRotation"),
    number("itemWidth"),
    number("itemHeight"),
    number("itemScaleX"),
    number("itemScaleY"),
    { Field::Numbers, 9, "itemTransform" },
    number("itemPositionX"),
    number("itemPositionY"),
    bytes(4), // datasource id
    text(), // datasource field
    bytes(penBytes),
};
constexpr Field brush[] = { bytes(brushBytes) };

using Fields = std::span<const Field>;

/// The same of a class without a pen.
constexpr Fields withoutPen = Fields(outlined).first(std::size(outlined) - 1);

/// The parts of a record in their order: the fields of its class stand before or behind what the bases write.
struct Layout
{
    MobraTypes::ShapeType shape;
    Fields before;
    Fields common;
    Fields behind;
};

constexpr Field ofRoundedRectangle[] = { number("roundingRadiusX"), number("roundingRadiusY") };
constexpr Field ofPie[] = { bytes(4 + 4 + 1) }; // two angles, the circle
constexpr Field beforeLabelText[] = { text("itemText"), bytes(colorBytes + 2), number("itemDocumentMargin") };
// The brush; the font; the coefficients; three flags and the limits.
constexpr Field behindLabelText[] = { bytes(brushBytes), text(), bytes(2 + 2 + 1 + 1),
    number("oldTransformCoefficientM31"), number("oldTransformCoefficientM32"), bytes(3 + 1) };
constexpr Field beforeRichText[] = { text("itemHtml"),
    { Field::NumberUnless, 1, "screenDpi", screenFactorSinceVersion }, bytes(colorBytes) };
// The brush; font and alignment of the empty box.
constexpr Field behindRichText[] = { bytes(brushBytes), text(), bytes(2 + 2 + 1 + 1 + 2) };
// The symbol; option, white space, hidden text, level and font size; alignment and five flags.
constexpr Field beforeBarcode[]
    = { bytes(2), text("barcodeText"), bytes(2 + 2 + 1 + 2 + 2), text(), bytes(2 + 5 * 1) };
constexpr Field behindBarcode[] = { bytes(2 * colorBytes) };
// The drawing; two flags.
constexpr Field beforeSvg[] = { number("oldTransformCoefficientM31"), number("oldTransformCoefficientM32"),
    { Field::Data }, bytes(1 + 1) };
// Two flags; the drawing.
constexpr Field beforeSymbol[] = { bytes(1 + 1, symbolFlagsSinceVersion), { Field::Data },
    number("oldTransformCoefficientM31"), number("oldTransformCoefficientM32") };
// The pen, and the fill once or twice, or in old documents not at all.
constexpr Field behindSymbol[] = { bytes(3 * colorBytes) };
// The picture; the coefficients; transparency and the first resize.
constexpr Field beforePixmap[]
    = { picture(), number("oldTransformCoefficientM31"), number("oldTransformCoefficientM32"), bytes(1 + 1) };
constexpr Field ofLine[]
    = { number("itemLength"), bytes(2), number("itemPositionX"), number("itemPositionY") };

// The id; the visibility.
constexpr Field ofLayer[] = { bytes(2), number("itemZValue"), bytes(1), text("name") };

/// The classes with fields of their own.
constexpr Layout layouts[] = {
    { MobraTypes::GroupShape, {}, withoutPen, {} },
    { MobraTypes::LayerShape, ofLayer, {}, {} },
    { MobraTypes::LabelTextShape, beforeLabelText, outlined, behindLabelText },
    { MobraTypes::RichTextShape, beforeRichText, outlined, behindRichText },
    { MobraTypes::PixmapShape, beforePixmap, withoutPen, {} },
    { MobraTypes::BarcodeShape, beforeBarcode, withoutPen, behindBarcode },
    { MobraTypes::SvgShape, beforeSvg, withoutPen, {} },
    { MobraTypes::SymbolShape, beforeSymbol, withoutPen, behindSymbol },
    { MobraTypes::LineShape, {}, outlined, ofLine },
    { MobraTypes::RoundedRectangleShape, ofRoundedRectangle, outlined, brush },
    { MobraTypes::PieShape, ofPie, outlined, brush },
};

Layout layoutOf(MobraTypes::ShapeType shape)
{
    const auto found = std::ranges::find(layouts, shape, &Layout::shape);
    return found == std::end(layouts) ? Layout { shape, {}, outlined, brush } : *found;
}

class Walk
{
public:
    Walk(QByteArrayView record, unsigned int version)
        : m_rest(record)
        , m_version(version)
    {
    }

    void along(Fields fields)
    {
        for (const Field &field : fields)
            along(field);
    }

    [[nodiscard]] bool isAtEnd() const { return m_rest.isEmpty(); }
    [[nodiscard]] const Problems &problems() const { return m_problems; }

private:
    void along(const Field &field)
    {
        if (m_version < field.sinceVersion)
            return;
        switch (field.kind) {
        case Field::Bytes:
            static_cast<void>(take(field.count));
            return;
        case Field::Text:
            note(ItemValue::textProblem(nextText(), QString::fromLatin1(field.key)), field.key);
            return;
        case Field::Data:
            static_cast<void>(nextData());
            return;
        case Field::Picture:
            if (integer<quint32>() != 0)
                skipPng();
            return;
        case Field::NumberUnless:
            if (integer<quint8>() != 0)
                return;
            [[fallthrough]];
        case Field::Numbers:
            for (int i = 0; i < field.count; ++i)
                check(std::bit_cast<double>(integer<quint64>()), field.key);
            return;
        }
    }

    QByteArrayView take(qsizetype count)
    {
        const QByteArrayView taken = m_rest.first(std::min(count, m_rest.size()));
        m_rest = m_rest.sliced(taken.size());
        return taken;
    }

    /// Its mark, and chunks of a length, a name of four bytes, as many bytes and a checksum.
    void skipPng()
    {
        constexpr int markBytes = 8;
        constexpr qsizetype checksumBytes = 4;
        constexpr quint32 lastChunk = 0x49454E44; // "IEND"
        static_cast<void>(take(markBytes));
        for (quint32 name = 0; name != lastChunk && !m_rest.isEmpty();) {
            const auto length = integer<quint32>();
            name = integer<quint32>();
            static_cast<void>(take(length + checksumBytes));
        }
    }

    template <typename Integer> Integer integer()
    {
        const QByteArrayView taken = take(sizeof(Integer));
        return taken.size() == sizeof(Integer) ? qFromBigEndian<Integer>(taken.data()) : 0;
    }

    QByteArrayView nextData()
    {
        constexpr quint32 null = 0xFFFFFFFF;
        const auto length = integer<quint32>();
        return take(length == null ? 0 : length);
    }

    QString nextText()
    {
        const QByteArrayView units = nextData();
        QString text(units.size() / 2, Qt::Uninitialized);
        qFromBigEndian<char16_t>(units.data(), text.size(), text.data());
        return text;
    }

    void check(double number, const char *key)
    {
        const QString problem = ItemValue::numberProblem(number, QString::fromLatin1(key));
        note(problem, key);
    }

    void note(const QString &problem, const char *key)
    {
        const QString where = u'/' + QString::fromLatin1(key);
        const auto isTold = [&](const Problem &told) { return told.what == problem && told.where == where; };
        if (!problem.isEmpty() && std::ranges::none_of(m_problems, isTold))
            m_problems.append({ {}, where, problem, {} });
    }

    QByteArrayView m_rest;
    unsigned int m_version;
    Problems m_problems;
};

} // namespace

Problems RecordValues::problems(MobraTypes::ShapeType shape, const QByteArray &record, unsigned int version)
{
    const Layout layout = layoutOf(shape);
    Walk walk(record, version);
    walk.along(layout.before);
    walk.along(layout.common);
    walk.along(layout.behind);
    Q_ASSERT_X(walk.isAtEnd(), "RecordValues", "a class with fields of its own needs a layout");
    return walk.problems();
}
