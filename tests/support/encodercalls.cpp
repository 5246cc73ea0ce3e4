// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/encodercalls.h"

#include <QtGlobal>

#include <dlfcn.h>
#include <zint.h>

namespace {

int encodingCalls = 0;
int drawingCalls = 0;

template <typename Function> Function *libzints(Function *, const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

} // namespace

// The program's own functions come before those of the same name in libraries, for the libraries too.
extern "C" Q_DECL_EXPORT int ZBarcode_Encode(zint_symbol *symbol, const unsigned char *source, int length)
{
    ++encodingCalls;
    static auto *const encode = libzints(&ZBarcode_Encode, "ZBarcode_Encode");
    return encode(symbol, source, length);
}

extern "C" Q_DECL_EXPORT int ZBarcode_Buffer_Vector(zint_symbol *symbol, int angle)
{
    ++drawingCalls;
    static auto *const draw = libzints(&ZBarcode_Buffer_Vector, "ZBarcode_Buffer_Vector");
    return draw(symbol, angle);
}

namespace EncoderCalls {

int encodings()
{
    return encodingCalls;
}

int drawings()
{
    return drawingCalls;
}

} // namespace EncoderCalls
