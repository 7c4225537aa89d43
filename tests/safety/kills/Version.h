#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

/// The value with which the entry is saved for the `number`th time. They differ in length, so that a mixture
/// of two versions of the file is neither.
inline std::string VersionText(int number)
{
    constexpr int lengths = 11;
    constexpr int step = 37;
    return std::to_string(number) + ':' + std::string(static_cast<std::size_t>(number % lengths * step), 'x');
}

/// Which one a value is.
inline int VersionNumber(const std::string& text)
{
    return std::stoi(text);
}
