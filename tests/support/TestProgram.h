#pragma once

#include "core/SettingsFile.h"
#include "qt/Strings.h"
#include "store/EntryFields.h"
#include "store/RecordLayouts.h"
#include "support/ExpectedReports.h"
#include "support/ScriptedClock.h"
#include "support/ScriptedFileOperations.h"
#include "support/ScriptedPrompts.h"
#include "support/TemporaryFolder.h"
#include "ui/common/Notices.h"
#include "ui/common/Program.h"

#include <pugixml.hpp>

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Tarno
{

/// Values of a record by position. All others are those of the template.
using Values = std::map<std::size_t, std::string>;

/// A complete program without windows, in a temporary folder with the shipped files, no entry and no
/// location. Start loads the files.
class TestProgram
{
public:
    TestProgram()
    {
        CopyShipped("");
        sql.SetShowConflict([this](const ConflictNotice& conflict) { ShowConflict(conflict, messages); });
    }

    /// Replaces the empty log by the sample log.
    void UseSample() { CopyShipped("sample/"); }

    void Start()
    {
        if (sql.Init() != succeeded) {
            Scripted::Fail(QStringLiteral("the data files cannot be loaded"));
        }
    }

    /// Stores a new entry and returns its key.
    int AddEntry(const Values& values)
    {
        Record record;
        sql.EntryGet(0, record);
        SetTexts(record, values);
        sql.EntryUpdate(record);
        return std::stoi(record.Text(0));
    }

    /// Stores a new location and returns its key. The default position is 151.25 east, 33.8 south.
    int AddLocation(const std::string& name, const Values& values = {})
    {
        Record record;
        sql.LocationGet(0, record);
        SetTexts(record, {{LocationField::LocName, name},
                          {LocationField::LocLatt, "-33.8"},
                          {LocationField::LocLong, "151.25"},
                          {LocationField::LocGMT, "10"},
                          {LocationField::LocDST, "0"}});
        SetTexts(record, values);
        sql.LocationUpdate(record);
        return std::stoi(record.Text(0));
    }

    /// Returns the values of all records in a data file on disk.
    std::vector<std::vector<std::string>> Stored(const char* file) const
    {
        const std::string bytes = folder.Read(file);
        pugi::xml_document document;
        document.load_buffer(bytes.data(), bytes.size(), pugi::parse_default | pugi::parse_ws_pcdata_single);
        std::vector<std::vector<std::string>> records;
        for (const pugi::xml_node& record : document.child("data").children()) {
            records.emplace_back();
            for (const pugi::xml_node& child : record.children()) {
                records.back().emplace_back(child.text().get());
            }
        }
        return records;
    }

    /// Returns the values of the stored entry with the key, or an empty list.
    std::vector<std::string> StoredEntry(int key) const
    {
        for (std::vector<std::string>& entry : Stored("tarno.xml")) {
            if (!entry.empty() && entry[0] == std::to_string(key)) {
                return std::move(entry);
            }
        }
        return {};
    }

    /// Returns one value of a stored entry.
    std::string StoredEntry(int key, std::size_t position) const
    {
        const std::vector<std::string> entry = StoredEntry(key);
        return position < entry.size() ? entry[position] : "(missing value)";
    }

    TemporaryFolder folder;
    ExpectedReports reports;
    ScriptedFileOperations operations;
    ScriptedClock clock;
    ScriptedMessageBoxes messages;
    ScriptedFileDialogs files;
    ScriptedProgramStarter programs;
    ScriptedPrinters printers;
    ProgramFolder programFolder{folder.Path()};
    cSQL sql{programFolder, operations};
    cDescs descs;
    SettingsFile store{folder.PathOf("settings.xml"), operations};
    CRegSettings settings{store};
    TemporaryFolder stateFolder;
    RememberedWindows windows{FromUtf8(stateFolder.PathOf("windows.ini"))};
    ScriptedFileOperations draftOperations; // so that a draft does not take a failure scripted for a save
    Drafts drafts{stateFolder.PathOf("drafts"), draftOperations};
    const Program program{programFolder, sql,      descs,    settings,   clock,   messages,
                          files,         programs, printers, operations, windows, drafts};

private:
    void CopyShipped(const std::string& from) const
    {
        for (const auto& entry : std::filesystem::directory_iterator(ToPath(TARNO_SHIPPED_DATA "/" + from))) {
            if (entry.is_regular_file()) {
                folder.Write(FromPath(entry.path().filename()), ReadWholeFile(FromPath(entry.path())));
            }
        }
    }

    static void SetTexts(Record& record, const Values& values)
    {
        for (const auto& [position, text] : values) {
            record.SetText(position, text);
        }
    }
};

} // namespace Tarno
