// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/datainput.h"

#include "label/labellimits.h"

#include <QFile>
#include <QFileInfo>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

/// Why a path holds nothing to read; empty for an ordinary file of a bearable size.
QString obstacle(const QFileInfo &info)
{
    if (!info.exists())
        return u"does not exist"_s;
    if (!info.isFile())
        return u"is no ordinary file"_s;
    return info.size() > LabelLimits::MaxDataBytes
        ? u"is larger than %1 bytes (%2)"_s.arg(LabelLimits::MaxDataBytes).arg(info.size())
        : QString();
}

} // namespace

DataInput DataInput::open(const QString &path, Problems &problems)
{
    const bool isStandardInput = path == u"-";
    auto file = std::make_unique<QFile>(isStandardInput ? QString() : path);
    const QString reason = isStandardInput ? QString() : obstacle(QFileInfo(path));
    if (!reason.isEmpty()) {
        problems.append({ path, {}, reason, {} });
        return {};
    }
    if (isStandardInput ? file->open(stdin, QIODevice::ReadOnly) : file->open(QIODevice::ReadOnly))
        return { isStandardInput ? u"standard input"_s : path, std::move(file) };
    problems.append({ path, {}, u"cannot be read: "_s + file->errorString(), {} });
    return {};
}
