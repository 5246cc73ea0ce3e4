// SPDX-License-Identifier: BSD-3-Clause
#include "tests/label/barcodetable.h"

#include "platform/zint/symbologies.h"
#include "tests/label/barcodereadings.h"

#include <QFile>
#include <QSaveFile>
#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;
using Zint::Symbology;

namespace {

const QString marker = u"<!-- The test of read-back writes what follows. -->\n"_s;

QString pagePath()
{
    return QStringLiteral(VX_SOURCE_DIR "/docs/barcodes.md");
}

QString kindOf(const Symbology &symbology)
{
    switch (symbology.kind) {
    case Symbology::Kind::Linear:
        return u"linear"_s;
    case Symbology::Kind::Stacked:
        return u"stacked"_s;
    case Symbology::Kind::Matrix:
        return u"matrix"_s;
    case Symbology::Kind::Postal:
        return u"postal"_s;
    case Symbology::Kind::Composite:
        return u"composite"_s;
    }
    return {};
}

QString mark(bool holds)
{
    return holds ? u"✓"_s : QString();
}

/// How the decoder was helped, as the page explains it.
QString helpOf(const BarcodeReadings::Expected &expected)
{
    QString help;
    if (expected.enlargement > 1)
        help += u" ¹"_s;
    if (expected.upright)
        help += u" ²"_s;
    if (expected.growth > 1.0)
        help += u" ³"_s;
    return help;
}

} // namespace

void BarcodeTable::addRow(int symbol, const QString &name, const QString &by, const QString &result)
{
    const Symbology &symbology = *Zint::symbologyOf(symbol);
    const QStringList cells { QString::number(symbol), name, kindOf(symbology), mark(symbology.takesGs1),
        mark(symbology.hasText), mark(symbology.takesEci), by, result };
    m_rows.push_back({ symbol, u"| "_s + cells.join(u" | "_s) + u" |\n"_s });
}

void BarcodeTable::addReadings(
    const BarcodeReadings::Expected &expected, const QString &name, qsizetype count)
{
    addRow(expected.symbol, name, u"decoder"_s + helpOf(expected), u"%1 of %1 read"_s.arg(count));
}

void BarcodeTable::addComparison(int symbol, qsizetype count)
{
    addRow(symbol, Zint::symbologyOf(symbol)->name, u"modules"_s, u"%1 of %1 equal"_s.arg(count));
}

void BarcodeTable::addExplanation(int symbol, const QString &why)
{
    addRow(symbol, Zint::symbologyOf(symbol)->name, u"–"_s, why);
}

QStringList BarcodeTable::missing() const
{
    QStringList names;
    for (const Symbology &symbology : Zint::symbologies()) {
        if (std::ranges::count(m_rows, symbology.number, &Row::symbol) == 0)
            names << symbology.name;
    }
    return names;
}

QString BarcodeTable::table() const
{
    QString table = u"\n| No. | Symbology | Kind | GS1 | Text | ECI | Checked by | Result |\n"
                    "|---:|---|---|:-:|:-:|:-:|---|---|\n"_s;
    std::vector<Row> rows = m_rows;
    std::ranges::stable_sort(rows, {}, &Row::symbol);
    for (const Row &row : rows)
        table += row.text;
    return table;
}

QString BarcodeTable::page() const
{
    QFile file(pagePath());
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

bool BarcodeTable::isOnThePage() const
{
    return page().endsWith(marker + table());
}

bool BarcodeTable::update() const
{
    const QString old = page();
    const qsizetype place = old.indexOf(marker);
    QSaveFile file(pagePath());
    if (place < 0 || !file.open(QIODevice::WriteOnly))
        return false;
    file.write((old.first(place) + marker + table()).toUtf8());
    return file.commit();
}
