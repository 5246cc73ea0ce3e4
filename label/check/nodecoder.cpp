// SPDX-License-Identifier: BSD-3-Clause
#include "label/check/codedecoder.h"

bool CodeDecoder::isAvailable()
{
    return false;
}

std::optional<CodeDecoder::Reading> CodeDecoder::read(
    const Picture & /*picture*/, const std::string & /*formats*/)
{
    return {};
}
