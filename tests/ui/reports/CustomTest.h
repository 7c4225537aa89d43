#pragma once

#include "ui/reports/BuilderTest.h"
#include "ui/reports/fCustom.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

namespace Tarno
{

// The window in which the fields of the log report are customised, as its user sees it.

/// Opens the window and takes `steps` in it, which must close it.
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

/// What the four boxes show, "/" between them.
inline std::string Boxes(const QWidget& custom)
{
    return BoxText(custom, "txtDesc") + "/" + BoxText(custom, "txtLabel") + "/" +
           BoxText(custom, "txtWidth") + "/" + BoxText(custom, "txtFont");
}

/// All values of a stored field, "/" between them.
inline std::string StoredField(const TestProgram& program, std::size_t position)
{
    const Line field = program.Stored("field.xml").at(position);
    std::string joined;
    for (const std::string& value : field) {
        joined += (joined.empty() ? "" : "/") + value;
    }
    return joined;
}

/// How often a data file has been written.
inline std::ptrdiff_t Saves(const TestProgram& program)
{
    const auto& steps = program.operations.Steps();
    return std::count(steps.begin(), steps.end(), "replace");
}

} // namespace Tarno
