// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/worklimits.h"

#include <algorithm>
#include <sys/mman.h>
#include <sys/resource.h>

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool memoryCanBeLimited = false;
#else
constexpr bool memoryCanBeLimited = true;
#endif

constexpr rlim_t bytesPerMegabyte = 1024 * 1024;

void limit(__rlimit_resource resource, rlim_t value)
{
    rlimit now {};
    getrlimit(resource, &now);
    const rlim_t allowed = std::min(value, now.rlim_max);
    if (now.rlim_cur == allowed)
        return;
    now.rlim_cur = allowed;
    setrlimit(resource, &now);
}

/// Leaves a lower limit that the caller of the program has set.
void lower(__rlimit_resource resource, rlim_t value)
{
    rlimit now {};
    getrlimit(resource, &now);
    limit(resource, std::min(value, now.rlim_cur));
}

rlim_t secondsUsed()
{
    rusage used {};
    getrusage(RUSAGE_SELF, &used);
    return rlim_t(used.ru_utime.tv_sec + used.ru_stime.tv_sec + 1);
}

} // namespace

// A signal handler asks: only calls of the kernel are possible.
bool WorkLimits::memoryIsScarce() const
{
    if (megabytes == 0 || !memoryCanBeLimited)
        return false;
    const auto bytes = rlim_t(megabytes) * bytesPerMegabyte / 4;
    void *room = mmap(nullptr, bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (room == MAP_FAILED)
        return true;
    munmap(room, bytes);
    return false;
}

void WorkLimits::apply() const
{
    lower(RLIMIT_CORE, 0);
    if (megabytes > 0 && memoryCanBeLimited)
        lower(RLIMIT_AS, rlim_t(megabytes) * bytesPerMegabyte);
    if (fileMegabytes > 0)
        lower(RLIMIT_FSIZE, rlim_t(fileMegabytes) * bytesPerMegabyte);
    renewTime();
}

void WorkLimits::renewTime() const
{
    if (seconds > 0)
        limit(RLIMIT_CPU, secondsUsed() + rlim_t(seconds));
}
