// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/manifestlines.h"

using namespace Qt::StringLiterals;

ManifestLines::ManifestLines(const QString &path)
    : m_file(path)
{
}

std::unique_ptr<ManifestLines> ManifestLines::open(const QString &path, Problems &problems)
{
    std::unique_ptr<ManifestLines> lines(new ManifestLines(path));
    if (!lines->m_file.open(QIODevice::ReadOnly)) {
        problems.append({ path, {}, u"cannot be read: "_s + lines->m_file.errorString(), {} });
        return {};
    }
    if (lines->read())
        return lines;
    problems.append({ path, u"line 1"_s, u"is no manifest of a batch"_s, {} });
    return {};
}

bool ManifestLines::read()
{
    const qint64 size = m_file.size();
    const uchar *bytes = size > 0 ? m_file.map(0, size) : nullptr;
    m_file.close(); // what is mapped stays, and there may be more manifests than files may be open
    if (!bytes)
        return false;
    QByteArrayView rest(bytes, size);
    bool isFirst = true;
    for (qsizetype end = rest.indexOf('\n'); end >= 0; end = rest.indexOf('\n')) {
        const QByteArrayView text = rest.first(end + 1);
        rest = rest.sliced(end + 1);
        const QByteArray line = QByteArray::fromRawData(text.data(), text.size());
        if (std::exchange(isFirst, false)) {
            const std::optional<QJsonObject> head = Manifest::headOfLine(line);
            if (!head)
                return false;
            m_head = *head;
            Problem problem;
            const QString share = m_head.take(u"shard"_s).toString(u"0/1"_s);
            m_shard = Shard::parse(share, {}, problem).value_or(Shard());
        } else if (const std::optional<ManifestEntry> entry = ManifestEntry::fromLine(line)) {
            m_lines.push_back({ entry->row, text });
        } else {
            m_end = Manifest::endOfLine(line);
            break;
        }
    }
    return !isFirst;
}
