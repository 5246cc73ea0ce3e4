// SPDX-License-Identifier: BSD-3-Clause
#include "label/recordhead.h"

#include "label/itemvalue.h"

#include <QtEndian>

#include <bit>

using namespace Qt::StringLiterals;

namespace {

struct Field
{
    const char *key;
    int offset;
};

/// Offsets in a record of a version that has mirrors and overprint, one byte each, before all of these.
constexpr Field fields[] = {
    { "itemZValue", 9 },
    { "itemRotation", 22 },
    { "itemWidth", 30 },
    { "itemHeight", 38 },
    { "itemScaleX", 46 },
    { "itemScaleY", 54 },
    { "itemTransform", 62 },
    { "itemTransform", 70 },
    { "itemTransform", 78 },
    { "itemTransform", 86 },
    { "itemTransform", 94 },
    { "itemTransform", 102 },
    { "itemTransform", 110 },
    { "itemTransform", 118 },
    { "itemTransform", 126 },
    { "itemPositionX", 134 },
    { "itemPositionY", 142 },
};

constexpr unsigned int mirrorsSinceVersion = 6;
constexpr int mirrorBytes = 3;

double numberAt(const QByteArray &record, int offset)
{
    return std::bit_cast<double>(qFromBigEndian<quint64>(record.constData() + offset));
}

} // namespace

Problems RecordHead::problems(const QByteArray &record, unsigned int version)
{
    const int missing = version >= mirrorsSinceVersion ? 0 : mirrorBytes;
    Problems problems;
    for (const auto &[key, offset] : fields) {
        const QString name = QString::fromLatin1(key);
        const QString problem = ItemValue::numberProblem(numberAt(record, offset - missing), name);
        if (!problem.isEmpty())
            problems.append({ {}, u'/' + name, problem, {} });
    }
    return problems;
}
