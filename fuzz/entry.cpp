// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "targets.h"

#include <cstdint>

// What the fuzzer calls: FUZZ_TARGET is one of the functions of targets.h.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FUZZ_TARGET(QByteArray(reinterpret_cast<const char *>(data), static_cast<int>(size)));
    return 0;
}
