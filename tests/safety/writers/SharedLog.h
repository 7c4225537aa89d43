#pragma once

#include "core/Xml.h"
#include "safety/ChildProgram.h"
#include "support/StdStrings.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <list>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace Tarno
{

/// A trip with two values.
struct Trip {
    int key;
    std::string value;
};

using Trips = std::vector<Trip>;

/// Returns the trips 1 to `count`. Their values are "old-1", "old-2" and so on, followed by `padding`.
inline Trips OldTrips(int count, const std::string& padding = {})
{
    Trips trips;
    for (int key = 1; key <= count; ++key) {
        trips.push_back({key, "old-" + std::to_string(key) + padding});
    }
    return trips;
}

/// Returns the bytes of a log with these trips.
inline std::string LogOf(const Trips& trips)
{
    std::string bytes = "<data>\n";
    for (const Trip& trip : trips) {
        bytes += "\t<tarno>\n\t\t<TarnoNo>" + std::to_string(trip.key) + "</TarnoNo>\n\t\t<Value>" +
                 trip.value + "</Value>\n\t</tarno>\n";
    }
    return bytes + "</data>\n";
}

/// Returns the trips of a log, or nothing if it is incomplete.
inline std::optional<Trips> TripsIn(std::string_view bytes)
{
    pugi::xml_document document;
    if (!ParseXml(bytes, document) || !document.child("data")) {
        return std::nullopt;
    }
    Trips trips;
    for (const pugi::xml_node& trip : document.child("data").children("tarno")) {
        trips.push_back({trip.child("TarnoNo").text().as_int(), trip.child_value("Value")});
    }
    return trips;
}

/// Writes a log with these trips, and the other data files without records.
inline void WriteDataFiles(const TemporaryFolder& folder, const Trips& trips)
{
    for (const char* name : {"field.xml", "location.xml", "locationblank.xml", "Rpt.xml", "RptBlank.xml"}) {
        folder.Write(name, "<data />\n");
    }
    folder.Write("tarnoblank.xml", LogOf({{0, ""}}));
    folder.Write("tarno.xml", LogOf(trips));
}

/// A log that several programs change. Tracks the expected contents from the programs' output (see
/// writer.cpp).
class SharedLog
{
public:
    explicit SharedLog(const Trips& trips, const QString& place = QDir::tempPath()) : m_folder(place)
    {
        WriteDataFiles(m_folder, trips);
        WriteSimilarFiles();
        for (const Trip& trip : trips) {
            m_expected.insert(trip.value);
        }
        m_names = m_folder.Names();
    }

    /// Starts a program and waits until it has loaded the log.
    void Start(const std::string& task, int key)
    {
        m_writers.emplace_back(std::vector<std::string>{TARNO_WRITER, m_folder.Path(), task,
                                                        std::to_string(++m_started), std::to_string(key)});
        Await(m_writers.back(), "ready");
    }

    /// Tells every program to make `count` changes, with pauses of up to `longestPause` microseconds.
    void Begin(int count, int longestPause)
    {
        for (Writer& writer : m_writers) {
            writer.program.Tell(std::to_string(count) + ' ' + std::to_string(longestPause));
        }
    }

    /// Waits until every program has made its changes.
    void End()
    {
        for (Writer& writer : m_writers) {
            Await(writer, "done");
        }
    }

    /// Waits for 1 to `maxSaves` saves of the program that was started first, then kills it at a random
    /// moment, usually during its next save.
    void KillFirst(int maxSaves, std::mt19937& random)
    {
        Writer& writer = m_writers.front();
        const auto begin = std::chrono::steady_clock::now();
        const int saves = std::uniform_int_distribution(1, maxSaves)(random);
        for (int save = 0; save < saves; ++save) {
            Await(writer, "saved");
        }
        const auto aSave = (std::chrono::steady_clock::now() - begin) / saves;
        std::this_thread::sleep_for(aSave * std::uniform_real_distribution()(random));
        writer.program.Kill();
        while (const auto line = writer.program.Line()) {
            Note(writer, *line);
        }
        m_begun = writer.change;
        m_writers.pop_front();
    }

    /// Describes what is wrong with the log and the other files; empty if nothing is.
    std::string Fault()
    {
        const auto trips = TripsIn(m_folder.Read("tarno.xml"));
        if (!trips || !m_complaint.empty()) {
            return trips ? m_complaint : "the log is incomplete";
        }
        std::set<int> keys;
        Values found;
        for (const Trip& trip : *trips) {
            keys.insert(trip.key);
            found.insert(trip.value);
        }
        const Change begun = std::exchange(m_begun, {});
        if (found.contains(begun.after) || found.count(begun.before) < m_expected.count(begun.before)) {
            Expect(begun);
        }
        Values paths;
        for (const std::string& name : ChangedNames()) {
            const auto kept = name.starts_with("tarno-kept-") ? TripsIn(Read(name)) : std::nullopt;
            if (!kept || kept->size() != 1) {
                return name + " was left or removed";
            }
            found.insert(kept->front().value);
            paths.insert(m_folder.PathOf(name));
        }
        if (paths != m_kept) {
            return "the kept files differ from the files named in notices";
        }
        const bool isAllThere =
            m_kept.empty() ? found == m_expected
                           : std::includes(found.begin(), found.end(), m_expected.begin(), m_expected.end());
        return isAllThere && keys.size() == trips->size() ? "" : "trips are lost or duplicated";
    }

    /// Returns the names that were added to the folder or removed from it since the beginning.
    std::vector<std::string> ChangedNames() const
    {
        const auto now = m_folder.Names();
        std::vector<std::string> changed;
        std::set_symmetric_difference(m_names.begin(), m_names.end(), now.begin(), now.end(),
                                      std::back_inserter(changed));
        return changed;
    }

    std::string Read(const std::string& name) const { return m_folder.Read(name); }

    int Saves() const { return m_saves; }

    int KeptFiles() const { return static_cast<int>(m_kept.size()); }

private:
    using Values = std::multiset<std::string>;

    struct Change {
        std::string before; ///< old value of the trip, "" if it is new
        std::string after;  ///< new value, "" if the trip is deleted
    };

    struct Writer {
        explicit Writer(const std::vector<std::string>& command) : program(command) {}

        ChildProgram program;
        Change change; ///< not yet saved
    };

    void Await(Writer& writer, const std::string& word)
    {
        std::optional<std::string> line;
        while (line != word && (line = writer.program.Line())) {
            Note(writer, *line);
        }
        m_complaint += line ? "" : "A program has ended. ";
    }

    void Note(Writer& writer, const std::string& line)
    {
        const auto blank = line.find(' ');
        const std::string word = line.substr(0, blank);
        const std::string rest = blank == std::string::npos ? "" : line.substr(blank + 1);
        if (word == "change") {
            const auto end = rest.find('>');
            writer.change = {rest.substr(0, end), rest.substr(end + 1)};
        } else if (word == "saved") {
            Expect(std::exchange(writer.change, {}));
        } else if (word == "kept") {
            m_kept.insert(rest);
        } else if (word == "message" || word == "failed") {
            m_complaint += line + ". ";
        }
    }

    void Expect(const Change& change)
    {
        ++m_saves;
        m_expected.erase(change.before);
        if (!change.after.empty()) {
            m_expected.insert(change.after);
        }
    }

    /// Writes files whose names are similar to those of temporaries.
    void WriteSimilarFiles() const
    {
        for (const char* name : {"tarno.xml.12.tmp", "tarno.xml.49-abc.tarno-tmp", "tarno.xml.tarno-tmp",
                                 "xtarno.xml.49.tarno-tmp", "precious"}) {
            m_folder.Write(name, "not ours");
        }
        m_folder.MakeFolder("tarno.xml.50.tarno-tmp");
        if constexpr (!isWindows) {
            m_folder.MakeLink("tarno.xml.51.tarno-tmp", "precious");
        }
    }

    TemporaryFolder m_folder;
    std::list<Writer> m_writers;
    Values m_expected;
    std::vector<std::string> m_names; ///< files in the folder at the beginning
    Change m_begun;                   ///< last change of a killed program, which may have been saved
    Values m_kept;                    ///< paths of kept files named in notices
    std::string m_complaint;
    int m_started = 0;
    int m_saves = 0;
};

} // namespace Tarno
