#pragma once

#include <QtTest/QTest>

#include <string>
#include <vector>

// Lets QCOMPARE print std::string and lists of them, with line ends and control characters escaped.

namespace QTest
{

template <>
inline char* toString(const std::string& text)
{
    return toPrettyCString(text.data(), static_cast<int>(text.size()));
}

template <>
inline char* toString(const std::vector<std::string>& texts)
{
    std::string joined;
    for (const std::string& text : texts) {
        joined += (joined.empty() ? "[" : ", ") + text;
    }
    return qstrdup(texts.empty() ? "[]" : (joined + "]").c_str());
}

} // namespace QTest
