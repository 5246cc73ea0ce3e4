// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/interruption.h"

#include "apps/vxlabel/exitcode.h"

#include <atomic>
#include <csignal>
#include <unistd.h>

namespace {

std::atomic<bool> postponed = false;
std::atomic<bool> pending = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler may use nothing else");

[[noreturn]] void leave()
{
    Interruption::tell();
    _exit(int(ExitCode::Interrupted));
}

void handleSignal(int /*signal*/)
{
    if (!postponed)
        leave();
    pending = true;
}

} // namespace

namespace Interruption {

void install()
{
    std::signal(SIGINT, handleSignal);
    std::signal(SIGTERM, handleSignal);
}

Postponed::Postponed()
{
    postponed = true;
}

Postponed::~Postponed()
{
    postponed = false;
    if (pending)
        leave();
}

bool isPending()
{
    return pending;
}

void tell()
{
    // There is nobody left to tell that this cannot be written.
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, line.data(), std::size_t(line.size()));
}

} // namespace Interruption
