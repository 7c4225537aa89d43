#pragma once

#include "core/Text.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <string_view>

namespace Tarno
{

inline bool IsDigit(char letter)
{
    return letter >= '0' && letter <= '9';
}

/// Takes a text apart from its start.
class Scanner
{
public:
    explicit Scanner(std::string_view text) : m_rest(text) {}

    bool AtEnd() const { return m_rest.empty(); }

    /// Takes one of the letters. Returns it, or 0 if none of them is next.
    char Take(std::string_view letters)
    {
        if (m_rest.empty() || letters.find(m_rest.front()) == std::string_view::npos) {
            return 0;
        }
        const char taken = m_rest.front();
        m_rest.remove_prefix(1);
        return taken;
    }

    /// Takes a word, without regard to the case of ASCII letters.
    bool TakeWord(std::string_view word)
    {
        const bool isNext = EqualIgnoringCase(m_rest.substr(0, word.size()), word);
        m_rest.remove_prefix(isNext ? word.size() : 0);
        return isNext;
    }

    void SkipBlanks()
    {
        while (Take(" \t") != 0) {
        }
    }

    /// Takes all digits that are next. Returns an empty text if there are fewer or more than allowed.
    std::string_view TakeDigits(std::size_t atLeast, std::size_t atMost)
    {
        const auto end = std::find_if_not(m_rest.begin(), m_rest.end(), IsDigit);
        const auto count = static_cast<std::size_t>(end - m_rest.begin());
        const std::string_view digits = m_rest.substr(0, count);
        m_rest.remove_prefix(count);
        return count >= atLeast && count <= atMost ? digits : std::string_view();
    }

private:
    std::string_view m_rest;
};

/// Returns the value of at most nine digits; -1 for an empty text.
inline int ValueOf(std::string_view digits)
{
    int value = -1;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return value;
}

} // namespace Tarno
