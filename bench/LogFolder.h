#pragma once

#include "core/Conversions.h"
#include "core/Paths.h"
#include "store/EntryFields.h"
#include "store/RecordLayouts.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#ifdef _WIN32
#include <process.h>
#define getpid _getpid
#else
#include <unistd.h>
#endif

namespace Tarno
{

/// A data folder with generated trips and locations. It is removed with the object.
class LogFolder
{
public:
    LogFolder(int entries, int locations = 50)
        : m_path(std::filesystem::temp_directory_path() / ("tarno-bench-" + std::to_string(getpid())))
    {
        std::filesystem::create_directories(m_path);
        for (const char* shipped :
             {"field.xml", "tarnoblank.xml", "locationblank.xml", "Rpt.xml", "RptBlank.xml"}) {
            std::filesystem::copy_file(std::filesystem::path(TARNO_SHIPPED_DATA) / shipped, m_path / shipped,
                                       std::filesystem::copy_options::overwrite_existing);
        }
        WriteEntries(entries, locations);
        WriteLocations(locations);
    }

    LogFolder(const LogFolder&) = delete;
    LogFolder& operator=(const LogFolder&) = delete;

    ~LogFolder() { std::filesystem::remove_all(m_path); }

    std::string Path() const { return FromPath(m_path); }

private:
    /// Returns a realistic value that differs between trips.
    static std::string Value(std::size_t position, int number, int locations)
    {
        static constexpr std::array<std::string_view, 6> texts{
            "Snapper~CL~Bream",
            "Pilchard, whole, on ganged 4/0s",
            "Fished the drop-off &amp; the weed beds until noon",
            "K\xC3\xB6"
            "derfisch, tot",
            "2.5 m",
            "Flathead 41 and 52 cm (kept), 4 undersize~CL~Squid x 3"};
        const auto twoDigits = [](int value) { return ZeroPadded(value, 2); };
        switch (position) {
        case EntryField::StartDate:
        case EntryField::EndDate:
            return std::to_string(1900 + number / 336 % 200) + '-' + twoDigits(number % 12 + 1) + '-' +
                   twoDigits(number % 28 + 1);
        case EntryField::LocNo:
            return std::to_string(number * 7 % locations + 1);
        case EntryField::MoonPhase:
            return std::to_string(number * 13 % 200 - 99);
        case EntryField::TargetSpecies:
        case EntryField::BaitUsed:
        case EntryField::Method:
        case EntryField::FishCaught:
        case EntryField::Obbos:
            return std::string(texts.at((static_cast<std::size_t>(number) + position) % texts.size()));
        case EntryField::Picture:
            return {};
        default:
            return position < EntryField::LocNo || position > EntryField::WaterClarity
                       ? twoDigits(number * 5 % 24) + ':' + twoDigits(number * 7 % 60)
                       : std::to_string(number % 4);
        }
    }

    void WriteEntries(int entries, int locations) const
    {
        std::ofstream file(m_path / "tarno.xml", std::ios::binary);
        file << "<data>\n";
        for (int number = 1; number <= entries; ++number) {
            file << "\t<tarno>\n\t\t<TarnoNo>" << number << "</TarnoNo>\n";
            for (std::size_t child = 1; child < EntryField::Count; ++child) {
                file << "\t\t<Child" << child << '>' << Value(child, number, locations) << "</Child" << child
                     << ">\n";
            }
            file << "\t</tarno>\n";
        }
        file << "</data>\n";
    }

    void WriteLocations(int locations) const
    {
        std::ofstream file(m_path / "location.xml", std::ios::binary);
        file << "<data>\n";
        for (int number = 1; number <= locations; ++number) {
            file << "\t<location>\n\t\t<LocNo>" << number << "</LocNo>\n\t\t<LocName>Place " << number
                 << "</LocName>\n";
            for (std::size_t child = LocationField::LocDirections; child < LocationField::Count; ++child) {
                file << "\t\t<Child" << child << ">-33.8</Child" << child << ">\n";
            }
            file << "\t</location>\n";
        }
        file << "</data>\n";
    }

    std::filesystem::path m_path;
};

} // namespace Tarno
