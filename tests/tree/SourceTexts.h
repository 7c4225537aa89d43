#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

/// The string literals of C++ code in order. Adjacent literals are joined, escapes resolved, comments
/// skipped. Raw string literals are not supported.
std::vector<std::string> LiteralsOf(std::string_view code);

/// The strings of a Designer form in order, without mnemonics and without texts for assistive tools only.
std::vector<std::string> StringsOfForm(std::string_view form);

/// Resolves \r, \n, \t, \\, \", \' and \xNN. Throws std::runtime_error on any other escape.
std::string ResolveEscapes(std::string_view text);

/// Checks a list of fixed texts (see data/fixed-texts.txt for its form) against the files below `sources`.
/// Returns what is missing, in the order of the list, for example "ui/main/fTarno.ui: Add". Throws
/// std::runtime_error if a file of the list cannot be read.
std::vector<std::string> MissingTexts(const std::filesystem::path& sources, std::string_view list);

} // namespace Tarno
