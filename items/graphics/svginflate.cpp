// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/limits.h"
#include "items/graphics/svgguard.h"

#include <zlib.h>

#include <algorithm>

namespace {

constexpr char gzipMark[] = "\x1F\x8B";

/// Inflates a gzip stream of one or several members, never to more than the limit.
class Inflater
{
public:
    explicit Inflater(const QByteArray &bytes)
    {
        m_stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(bytes.constData()));
        m_stream.avail_in = static_cast<uInt>(bytes.size());
        constexpr int gzipOnly = 16;
        m_ready = inflateInit2(&m_stream, MAX_WBITS + gzipOnly) == Z_OK;
    }

    ~Inflater() { inflateEnd(&m_stream); }
    Q_DISABLE_COPY_MOVE(Inflater)

    std::optional<QByteArray> text()
    {
        int result = m_ready ? Z_OK : Z_MEM_ERROR;
        while (result == Z_OK || (result == Z_STREAM_END && m_stream.avail_in > 0)) {
            if (result == Z_STREAM_END && inflateReset(&m_stream) != Z_OK)
                return {};
            result = inflatePart();
            if (m_text.size() > Limits::MaxSvgBytes)
                return {};
        }
        if (result != Z_STREAM_END)
            return {};
        return m_text;
    }

private:
    int inflatePart()
    {
        constexpr qsizetype part = 64 * 1024;
        const qsizetype before = m_text.size();
        m_text.resize(before + part);
        m_stream.next_out = reinterpret_cast<Bytef *>(m_text.data() + before);
        m_stream.avail_out = part;
        const int result = inflate(&m_stream, Z_NO_FLUSH);
        m_text.resize(before + part - m_stream.avail_out);
        return result;
    }

    z_stream m_stream {};
    QByteArray m_text;
    bool m_ready = false;
};

} // namespace

std::optional<QByteArray> SvgGuard::inflated(const QByteArray &bytes)
{
    if (bytes.size() > Limits::MaxSvgBytes)
        return {};
    if (!bytes.startsWith(gzipMark))
        return bytes;
    return Inflater(bytes).text();
}
