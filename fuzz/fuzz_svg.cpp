// SPDX-License-Identifier: BSD-3-Clause
// Drawings, plain or compressed: what the guard lets through is loaded and drawn, and must not open a file.
#include "fuzz/fuzzsupport.h"
#include "items/graphics/svgguard.h"

#include <QByteArrayView>
#include <QSvgRenderer>

#include <algorithm>
#include <array>
#include <cstdarg>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

bool opensAreFindings = false;

/// Fonts, plugins and their caches are opened when they are first needed, whatever a drawing holds.
bool isOfTheSystem(QByteArrayView path)
{
    constexpr std::array folders { "/usr/", "/etc/", "/var/cache/", "/proc/", "/sys/", "/lib/" };
    return std::ranges::any_of(folders, [&](const char *folder) { return path.startsWith(folder); })
        || path.contains("/fontconfig");
}

int openUnlessForbidden(const char *path, int flags, mode_t rights)
{
    Fuzz::require(!opensAreFindings || isOfTheSystem(path));
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, rights));
}

void draw(const QByteArray &drawing)
{
    QSvgRenderer renderer;
    if (!renderer.load(drawing))
        return;
    QImage image(120, 90, QImage::Format_ARGB32_Premultiplied);
    image.fill(0);
    QPainter painter(&image);
    renderer.render(&painter);
}

} // namespace

/// Qt's calls end up here instead of in the C library.
#define VX_OPEN(name)                                                                                        \
    extern "C" __attribute__((visibility("default"))) int name(const char *path, int flags, ...)             \
    {                                                                                                        \
        va_list arguments;                                                                                   \
        va_start(arguments, flags);                                                                          \
        const mode_t rights = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;                        \
        va_end(arguments);                                                                                   \
        return openUnlessForbidden(path, flags, rights);                                                     \
    }

VX_OPEN(open)
VX_OPEN(open64)

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Fuzz::start();
    const auto bytes = QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    opensAreFindings = true;
    const SvgGuard::Answer answer = SvgGuard::check(bytes);
    Fuzz::require((answer.verdict == SvgGuard::Verdict::Clean) == answer.reason.isEmpty());
    Fuzz::require(answer.verdict != SvgGuard::Verdict::Refused || answer.drawing.isEmpty());
    // What is left of a drawing without its references holds none.
    if (answer.verdict == SvgGuard::Verdict::Links)
        Fuzz::require(SvgGuard::check(answer.drawing).verdict != SvgGuard::Verdict::Links);
    draw(answer.drawing);
    opensAreFindings = false;
    return 0;
}
