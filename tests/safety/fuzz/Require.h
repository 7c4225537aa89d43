#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

/// The function that each fuzzer defines: takes any bytes and returns 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace Tarno
{

/// Returns the bytes as a text.
inline std::string_view BytesOf(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}

/// Aborts the program if a property does not hold, so that the fuzzer keeps the input.
inline void Require(bool holds, const char* property)
{
    if (!holds) {
        std::fprintf(stderr, "broken: %s\n", property);
        std::abort();
    }
}

/// Returns `text` without XML white space.
inline std::string WithoutBlanks(std::string text)
{
    std::erase_if(text, [](char letter) {
        return letter == ' ' || letter == '\t' || letter == '\r' || letter == '\n';
    });
    return text;
}

} // namespace Tarno
