#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

/// What every program of this folder defines: takes any bytes, returns 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace Tarno
{

/// The bytes as a text.
inline std::string_view BytesOf(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}

/// Stops the program when a promise is broken, so that the fuzzer keeps the input.
inline void Promise(bool kept, const char* promise)
{
    if (!kept) {
        std::fprintf(stderr, "broken: %s\n", promise);
        std::abort();
    }
}

/// `text` without what XML takes for blanks.
inline std::string WithoutBlanks(std::string text)
{
    std::erase_if(text, [](char letter) {
        return letter == ' ' || letter == '\t' || letter == '\r' || letter == '\n';
    });
    return text;
}

} // namespace Tarno
