// SPDX-License-Identifier: BSD-3-Clause
// A library to be loaded before all others: in the file that VX_OPEN_CALLS names, it writes a line for each
// file that the program opens and each connection that it makes.
#include <dlfcn.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

// By the kernel's own calls, which are not told of.
void tell(const char *what, const char *name)
{
    const char *log = std::getenv("VX_OPEN_CALLS");
    if (!log)
        return;
    const auto descriptor = static_cast<int>(
        syscall(SYS_openat, AT_FDCWD, log, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
    if (descriptor < 0)
        return;
    char line[4'200];
    const int length = std::snprintf(line, sizeof line, "%s %s\n", what, name);
    const auto bytes
        = static_cast<size_t>(length) < sizeof line ? static_cast<size_t>(length) : sizeof line - 1;
    syscall(SYS_write, descriptor, line, bytes);
    syscall(SYS_close, descriptor);
}

template <typename Function> Function *next(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

/// The access rights that follow the flags of a call that may make a file.
mode_t rightsIn(int flags, va_list arguments)
{
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

} // namespace

#define VX_EXPORTED extern "C" __attribute__((visibility("default")))

#define VX_TELL_OPEN(name)                                                                                   \
    VX_EXPORTED int name(const char *path, int flags, ...)                                                   \
    {                                                                                                        \
        va_list arguments;                                                                                   \
        va_start(arguments, flags);                                                                          \
        const mode_t rights = rightsIn(flags, arguments);                                                    \
        va_end(arguments);                                                                                   \
        tell(#name, path);                                                                                   \
        return next<int(const char *, int, ...)>(#name)(path, flags, rights);                                \
    }

#define VX_TELL_OPENAT(name)                                                                                 \
    VX_EXPORTED int name(int folder, const char *path, int flags, ...)                                       \
    {                                                                                                        \
        va_list arguments;                                                                                   \
        va_start(arguments, flags);                                                                          \
        const mode_t rights = rightsIn(flags, arguments);                                                    \
        va_end(arguments);                                                                                   \
        tell(#name, path);                                                                                   \
        return next<int(int, const char *, int, ...)>(#name)(folder, path, flags, rights);                   \
    }

#define VX_TELL_FOPEN(name)                                                                                  \
    VX_EXPORTED FILE *name(const char *path, const char *mode)                                               \
    {                                                                                                        \
        tell(#name, path);                                                                                   \
        return next<FILE *(const char *, const char *)>(#name)(path, mode);                                  \
    }

VX_TELL_OPEN(open)
VX_TELL_OPEN(open64)
VX_TELL_OPENAT(openat)
VX_TELL_OPENAT(openat64)
VX_TELL_FOPEN(fopen)
VX_TELL_FOPEN(fopen64)

VX_EXPORTED int connect(int descriptor, const sockaddr *address, socklen_t length)
{
    tell("connect", "");
    return next<int(int, const sockaddr *, socklen_t)>("connect")(descriptor, address, length);
}
