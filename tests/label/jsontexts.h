// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/jsonformat.h"

#include <cstring>

/// Small documents as JSON, and what reading them tells.
namespace JsonTexts {

using namespace Qt::StringLiterals;

inline constexpr const char *smallText = R"({"format": "vxlabel", "version": 6,)"
                                         R"( "page": {"width": 100, "height": 50, "dpi": 300},)"
                                         R"( "inks": [{"name": "black", "color": "#000000"}],)"
                                         R"( "paper": "#ffffff", "items": []})";

/// The small document with one piece of its text replaced.
inline QByteArray edited(const char *from, const QByteArray &to)
{
    QByteArray text(smallText);
    const qsizetype at = text.indexOf(from);
    return at < 0 ? QByteArray("no such piece") : text.replace(at, qsizetype(std::strlen(from)), to);
}

inline QByteArray withItems(const QByteArray &items)
{
    return edited(R"("items": [])", R"("items": [)" + items + "]");
}

inline QByteArray rectangleWith(const QByteArray &member)
{
    return R"({"itemShape": 65578, )" + member + "}";
}

inline QStringList shortTexts(const Problems &problems)
{
    QStringList texts;
    for (const Problem &problem : problems)
        texts.append(problem.where.isEmpty() ? problem.what : problem.where + u": "_s + problem.what);
    return texts;
}

inline LoadResult read(const QByteArray &text, BrokenItems broken = BrokenItems::Refuse)
{
    return JsonFormat::read(text, u"a.vxl"_s, broken);
}

inline QStringList problemsOf(const QByteArray &text)
{
    const LoadResult result = read(text);
    return result.document ? QStringList(u"accepted"_s) : shortTexts(result.problems);
}

} // namespace JsonTexts
