#include "ArchiveNames.h"

#include "core/Text.h"

#include <QString>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace Tarno
{

namespace
{

constexpr std::string_view forbiddenOnWindows = "<>:\"|?*";
constexpr std::size_t longestPart = 255;  // bytes, on most file systems
constexpr std::size_t longestName = 1000; // bytes, below the limit of every system

bool IsControl(char letter)
{
    return static_cast<unsigned char>(letter) < 0x20 || letter == 0x7f;
}

/// Whether `part` is the name of a device on Windows, with any suffix.
bool IsDevice(std::string_view part)
{
    constexpr std::array devices{"con", "prn", "aux", "nul", "conin$", "conout$", "clock$"};
    std::string_view stem = part.substr(0, part.find('.'));
    stem = stem.substr(0, stem.find_last_not_of(' ') + 1);
    if (std::any_of(devices.begin(), devices.end(),
                    [&](std::string_view device) { return EqualIgnoringCase(stem, device); })) {
        return true;
    }
    constexpr std::size_t prefix = 3;
    const bool isPort =
        EqualIgnoringCase(stem.substr(0, prefix), "com") || EqualIgnoringCase(stem.substr(0, prefix), "lpt");
    if (!isPort) {
        return false;
    }
    const std::string_view number = stem.substr(prefix);
    constexpr std::array superscripts{"\u00b9", "\u00b2", "\u00b3"};
    return (number.size() == 1 && number.front() >= '0' && number.front() <= '9') ||
           std::find(superscripts.begin(), superscripts.end(), number) != superscripts.end();
}

std::string PartFault(std::string_view part)
{
    return part.empty()                  ? "has an empty part"
           : part == "." || part == ".." ? "leads to another folder"
           : part.size() > longestPart   ? "is too long"
           : part.find_first_of(forbiddenOnWindows) != std::string_view::npos
               ? "contains a character that Windows does not allow"
           : part.back() == '.' || part.back() == ' ' ? "has a part that ends with a dot or a blank"
           : IsDevice(part)                           ? "is the name of a device on Windows"
                                                      : "";
}

/// Returns the longest beginning of `text` with at most `size` bytes that does not cut a character.
std::string_view Shortened(std::string_view text, std::size_t size)
{
    if (text.size() <= size) {
        return text;
    }
    while (size > 0 && (static_cast<unsigned char>(text[size]) & 0xC0U) == 0x80) {
        --size;
    }
    return text.substr(0, size);
}

/// Returns the beginning and the suffix of a name: "pictures/a" and ".jpg".
std::pair<std::string_view, std::string_view> SplitSuffix(std::string_view name)
{
    const auto part = name.find_last_of('/') + 1;
    const auto dot = name.find_last_of('.');
    constexpr std::size_t longestSuffix = 20;
    const bool hasSuffix = dot != std::string_view::npos && dot > part && name.size() - dot <= longestSuffix;
    return {name.substr(0, hasSuffix ? dot : name.size()), hasSuffix ? name.substr(dot) : ""};
}

/// Returns a valid form of a part of a name.
std::string ValidPart(std::string_view part)
{
    std::string valid(part);
    std::replace_if(
        valid.begin(), valid.end(),
        [](char letter) {
            return IsControl(letter) || letter == '\\' ||
                   forbiddenOnWindows.find(letter) != std::string::npos;
        },
        '_');
    constexpr std::size_t roomForNumber = 20;
    const auto [stem, suffix] = SplitSuffix(valid);
    valid = std::string(Shortened(stem, longestPart - roomForNumber - suffix.size())) + std::string(suffix);
    while (valid.ends_with('.') || valid.ends_with(' ')) {
        valid.pop_back();
    }
    return valid.empty() || IsDevice(valid) ? '_' + valid : valid;
}

} // namespace

std::string NameFault(std::string_view name)
{
    if (name.empty()) {
        return "is empty";
    }
    if (std::any_of(name.begin(), name.end(), IsControl)) {
        return "contains a control character";
    }
    if (!IsXmlText(name)) {
        return "is not UTF-8";
    }
    if (name.find('\\') != std::string_view::npos) {
        return "contains a backslash";
    }
    if (name.front() == '/') {
        return "is an absolute path";
    }
    if (name.size() > 1 && name[1] == ':') {
        return "has a drive letter";
    }
    if (name.size() > longestName) {
        return "is too long";
    }
    std::vector<std::string> parts = Split(name, '/');
    for (const std::string& part : parts) {
        if (std::string fault = PartFault(part); !fault.empty()) {
            return fault;
        }
    }
    return {};
}

std::string CaseKey(std::string_view name)
{
    return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()))
        .normalized(QString::NormalizationForm_C)
        .toCaseFolded()
        .normalized(QString::NormalizationForm_C)
        .toStdString();
}

bool IsCompressedPicture(std::string_view name)
{
    constexpr std::array suffixes{".jpg", ".jpeg", ".png", ".gif", ".webp"};
    const auto suffix = SplitSuffix(name).second;
    return std::any_of(suffixes.begin(), suffixes.end(),
                       [&](std::string_view known) { return EqualIgnoringCase(suffix, known); });
}

void PictureNames::Reserve(std::string_view name)
{
    m_taken.insert(CaseKey(name));
}

bool PictureNames::Has(std::string_view name) const
{
    return m_taken.contains(CaseKey(name));
}

std::string PictureNames::Add(std::string_view wanted,
                              const std::function<bool(const std::string& name)>& isUsable)
{
    std::vector<std::string> parts = Split(wanted, '/');
    for (std::string& part : parts) {
        part = ValidPart(part);
    }
    std::string name = Join(parts, '/');
    if (!NameFault(name).empty()) { // too long altogether
        name = "pictures/" + (parts.empty() ? "_" : parts.back());
    }
    const std::string first = name;
    const auto [stem, suffix] = SplitSuffix(first);
    for (int number = 2; !m_taken.insert(CaseKey(name)).second && !(isUsable && isUsable(name)); ++number) {
        name = std::string(stem) + '-' + std::to_string(number) + std::string(suffix);
    }
    return name;
}

} // namespace Tarno
