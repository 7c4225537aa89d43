#pragma once

#include "ui/reports/BuilderTest.h"
#include "ui/reports/fCustom.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

namespace Tarno
{

// Helpers for tests that use fCustom like a user.

/// Opens the window and runs `steps`, which must close it.
template <typename Steps>
void ShowCustom(TestProgram& program, Steps&& steps)
{
    WhileOpen(
        "fCustom", [&] { fCustom(program.program, nullptr).exec(); }, std::forward<Steps>(steps));
}

inline void Choose(QWidget& custom, int row)
{
    ClickItem(custom, "lstField", row);
}

inline void Ok(QWidget& custom)
{
    Click(custom, "cmdOK");
}

/// Returns the texts of the four boxes, separated by "/".
inline std::string Boxes(const QWidget& custom)
{
    return BoxText(custom, "txtDesc") + "/" + BoxText(custom, "txtLabel") + "/" +
           BoxText(custom, "txtWidth") + "/" + BoxText(custom, "txtFont");
}

/// Returns the values of a stored field, separated by "/".
inline std::string StoredField(const TestProgram& program, std::size_t position)
{
    const Line field = program.Stored("field.xml").at(position);
    std::string joined;
    for (const std::string& value : field) {
        joined += (joined.empty() ? "" : "/") + value;
    }
    return joined;
}

/// Returns how often a data file has been saved.
inline std::ptrdiff_t Saves(const TestProgram& program)
{
    const auto& steps = program.operations.Steps();
    return std::count(steps.begin(), steps.end(), "replace");
}

} // namespace Tarno
