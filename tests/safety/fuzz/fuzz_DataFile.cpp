#include "Require.h"
#include "core/Conversions.h"
#include "core/Error.h"
#include "core/Text.h"
#include "core/Xml.h"
#include "store/RecordLayouts.h"
#include "store/cSQL.h"
#include "support/TemporaryFolder.h"

#include <array>
#include <functional>
#include <limits>
#include <map>
#include <optional>

using namespace Tarno;

namespace
{

/// A file that the program changes, with its operations.
struct File {
    std::string name;
    std::string record;
    std::string key;
    std::function<Status(const cSQL&, RecordList&)> list;
    std::function<Status(cSQL&, Record&)> update;
    std::function<Status(const cSQL&, std::int16_t, Record&)> get; ///< empty for field definitions
    std::function<Status(cSQL&, std::int16_t)> remove;             ///< empty for field definitions
};

const std::array<File, 4>& Files()
{
    static const std::array<File, 4> files{{
        {"tarno.xml", "tarno", "TarnoNo", &cSQL::EntryList, &cSQL::EntryUpdate, &cSQL::EntryGet,
         &cSQL::EntryDelete},
        {"location.xml", "location", "LocNo", &cSQL::LocationList, &cSQL::LocationUpdate, &cSQL::LocationGet,
         &cSQL::LocationDelete},
        {"field.xml", "field", "FieldNo", &cSQL::FieldList, &cSQL::FieldUpdate, nullptr, nullptr},
        {"Rpt.xml", "report", "RptNo", &cSQL::ReportList, &cSQL::ReportUpdate, &cSQL::ReportGet,
         &cSQL::ReportDelete},
    }};
    return files;
}

/// A folder with the shipped files.
class ShippedFolder
{
public:
    ShippedFolder()
    {
        for (const char* name : {"tarno.xml", "field.xml", "location.xml", "tarnoblank.xml",
                                 "locationblank.xml", "Rpt.xml", "RptBlank.xml"}) {
            m_shipped[name] = ReadWholeFile(std::string(TARNO_SHIPPED_DATA "/") + name);
            Restore(name);
        }
    }

    std::string Bytes(const std::string& name) const { return ReadWholeFile(folder.PathOf(name)); }

    void Restore(const std::string& name) const { folder.Write(name, m_shipped.at(name)); }

    /// Checks that the folder contains only the shipped files, all unchanged except `changed`.
    void CheckOthers(const std::string& changed) const
    {
        Require(folder.Names().size() == m_shipped.size(), "no file is added or removed");
        for (const auto& [name, bytes] : m_shipped) {
            Require(name == changed || Bytes(name) == bytes, "the other files do not change");
        }
    }

    TemporaryFolder folder;
    ProgramFolder programFolder{folder.Path()};

private:
    std::map<std::string, std::string> m_shipped;
};

/// The contents of a record.
struct Row {
    std::string element;
    std::optional<std::string> key;
    std::vector<std::string> texts;

    bool operator==(const Row&) const = default;
};

using Rows = std::vector<Row>;

/// The contents of a data file.
struct Content {
    bool listed = false; ///< whether the program lists the records
    Rows rows;
    std::vector<std::string> nonRecords; ///< comments, processing instructions and text around the records

    bool operator==(const Content&) const = default;
};

Row RowOf(const File& file, const RecordView& record)
{
    Row row{record.Node().name(), std::nullopt, {}};
    if (const pugi::xml_node key = record.Node().child(file.key.c_str()); key) {
        row.key = TextOf(key);
    }
    for (std::size_t position = 0; position < record.Count(); ++position) {
        row.texts.push_back(record.Text(position));
    }
    return row;
}

std::optional<Content> ContentOf(const File& file, std::string_view bytes)
{
    pugi::xml_document document;
    if (!ParseXml(bytes, document) || !document.child("data")) {
        return std::nullopt;
    }
    const pugi::xml_node data = document.child("data");
    Content content{data == document.first_child(), {}, {}};
    for (const pugi::xml_node& parent : {document.root(), data}) {
        std::string text;
        for (const pugi::xml_node& child : parent.children()) {
            if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
                text += child.value();
            } else if (child.type() != pugi::node_element) {
                content.nonRecords.push_back(std::string(child.name()) + '=' + child.value());
            } else if (parent == data) {
                content.rows.push_back(RowOf(file, RecordView(child)));
            }
        }
        // the program keeps blanks only in an element without other text
        content.nonRecords.push_back(text.find_first_not_of(" \t\r\n") == std::string::npos ? "" : text);
    }
    return content;
}

std::string Rewritten(std::string_view bytes)
{
    pugi::xml_document document;
    ParseXml(bytes, document);
    return SerializeXml(document);
}

Content WithoutBlanks(Content content)
{
    const auto strip = [](std::string& text) { text = ::WithoutBlanks(std::move(text)); };
    std::for_each(content.nonRecords.begin(), content.nonRecords.end(), strip);
    for (Row& row : content.rows) {
        std::for_each(row.texts.begin(), row.texts.end(), strip);
        row.key.reset(); // the key is compared as one of the texts
    }
    return content;
}

/// Returns the number by which the operations find `key`, if there is one.
std::optional<std::int16_t> NumberOf(const std::string& key)
{
    try {
        const std::int16_t number = ToInt16(key);
        return number != 0 && std::to_string(number) == key ? std::optional(number) : std::nullopt;
    } catch (const Error&) {
        return std::nullopt;
    }
}

/// Runs the program's operations on a file with any bytes.
class OperationsCheck
{
public:
    OperationsCheck(const ShippedFolder& folder, const File& file, std::string_view bytes)
        : m_folder(folder), m_file(file), m_bytes(bytes), m_text(bytes.substr(0, 48))
    {
        m_folder.folder.Write(file.name, bytes);
        Require(m_sql.Init() == succeeded, "Init succeeds with any file");
    }

    void Run()
    {
        const auto content = ContentOf(m_file, m_bytes);
        RecordList list;
        Require((m_file.list(m_sql, list) == succeeded) == content.has_value(),
                "records are listed if the file can be read");
        if (!content) {
            CheckEveryOperationFails();
            return;
        }
        m_content = *content;
        CheckList();
        Read();
        Require(OnDisk() == m_bytes, "reading changes nothing");
        // the first save changes some XML that only other programs write: it drops blanks written as
        // references next to a comment or a CDATA section, and separates two hyphens in a comment
        const auto kept = ContentOf(m_file, Rewritten(m_bytes));
        Require(kept && WithoutBlanks(*kept) == WithoutBlanks(m_content),
                "the first save removes only blanks");
        if (kept != m_content) {
            return;
        }
        Replace();
        Append();
        Remove();
        Read();
        CheckReopened();
    }

private:
    std::string OnDisk() const { return m_folder.Bytes(m_file.name); }

    void CheckEveryOperationFails()
    {
        Record record;
        Require(m_sql.EntryGet(0, record) == succeeded, "the templates do not depend on the file");
        for (const char* key : {"0", "1"}) {
            record.SetText(0, key);
            Require(m_file.update(m_sql, record) == failed, "no record is saved in an unreadable file");
        }
        if (m_file.get) {
            Require(m_file.get(m_sql, 1, record) == failed, "no record is found in an unreadable file");
            Require(m_file.remove(m_sql, 1) == failed, "nothing is removed from an unreadable file");
        }
        ReportLog();
        Require(m_sql.UnsavedChanges().empty(), "an unreadable file has no unsaved changes");
        Require(OnDisk() == m_bytes, "an unreadable file keeps its bytes");
        m_folder.CheckOthers(m_file.name);
    }

    /// Checks that the program lists the expected records.
    void CheckList() const
    {
        RecordList list;
        Require(m_file.list(m_sql, list) == succeeded, "a file that was read stays readable");
        Rows rows;
        for (const RecordView& record : list) {
            rows.push_back(RowOf(m_file, record));
        }
        Require(rows == (m_content.listed ? m_content.rows : Rows()), "the records are listed as they are");
    }

    /// Checks that the file on disk has the expected contents.
    void CheckSaved() const
    {
        Require(m_sql.UnsavedChanges().empty(), "a change is saved at once");
        Require(ContentOf(m_file, OnDisk()) == m_content, "a saved file contains the expected records");
        CheckList();
    }

    void CheckUnchanged(const std::string& before) const
    {
        Require(OnDisk() == before, "a failed change leaves the file unchanged");
        CheckList();
    }

    void Read()
    {
        for (const Row& row : m_content.rows) {
            const std::string key = row.key.value_or("");
            const auto found = Found(key);
            if (const auto number = NumberOf(key); m_file.get && number && found != m_content.rows.end()) {
                Record record;
                Require(m_file.get(m_sql, *number, record) == succeeded, "a record is found by its number");
                Require(RowOf(m_file, record.View()) == *found, "the first record with a number is found");
            }
            if (m_file.name == "location.xml") {
                const bool named =
                    found != m_content.rows.end() && found->texts.size() > LocationField::LocName;
                Require(m_sql.LocationNameGet(key) == (named ? found->texts[LocationField::LocName] : "1"),
                        "a location is found by the text of its key");
            }
        }
        ReportLog();
    }

    void ReportLog()
    {
        for (const std::int16_t location : std::array<std::int16_t, 2>{0, 1}) {
            const Status status = m_sql.ReportLogData("StartDate,LocNo,MoonPhase,TideStart,FishAction,Obbos",
                                                      "1,5,16,6,27,31", location);
            const ReportTable grid = m_sql.ReportGrid();
            const std::size_t trips = m_content.listed ? m_content.rows.size() : 0;
            Require(status == failed || m_file.name != "tarno.xml" || location != 0 ||
                        grid.size() == std::max<std::size_t>(trips, 1),
                    "the report has a row for every trip, and one row if there are none");
            for (const std::size_t column : {0U, 3U}) {
                if (status == succeeded) {
                    ReportTable& table = m_sql.ReportGrid();
                    mMain::ShellSort(table, {.column = column, .descending = column > 0, .mode = 0});
                    Require(std::is_permutation(table.begin(), table.end(), grid.begin(), grid.end()),
                            "sorting loses no row");
                    Require(std::is_sorted(table.begin(), table.end(),
                                           [column](const ReportRow& left, const ReportRow& right) {
                                               return column > 0 ? left[column] > right[column]
                                                                 : left[column] < right[column];
                                           }),
                            "sorted rows are in order");
                }
            }
        }
    }

    /// Returns the record that the key `key` finds.
    Rows::iterator Found(const std::string& key)
    {
        return std::find_if(m_content.rows.begin(), m_content.rows.end(),
                            [&](const Row& row) { return row.element == m_file.record && row.key == key; });
    }

    /// Changes and saves the first listed records.
    void Replace()
    {
        constexpr std::size_t maxRecords = 3;
        RecordList list;
        m_file.list(m_sql, list);
        std::vector<Record> records;
        for (const RecordView& view : list) {
            if (view.Count() > 0 && view.Text(0) != "0" && records.size() < maxRecords) {
                records.emplace_back(view);
            }
        }
        for (Record& record : records) {
            if (record.Count() > 1) {
                Record changed = record;
                changed.SetText(1, m_text);
                Require(changed.Text(1) == XmlText(m_text), "a record stores any text");
                if (RowOf(m_file, changed.View()).key == RowOf(m_file, record.View()).key) {
                    record = changed;
                }
            }
            const std::string before = OnDisk();
            const auto found = Found(record.Text(0));
            const bool expected = found != m_content.rows.end();
            Require((m_file.update(m_sql, record) == succeeded) == expected,
                    "a record is replaced if its key exists");
            if (expected) {
                *found = RowOf(m_file, record.View());
                CheckSaved();
            } else {
                CheckUnchanged(before);
            }
        }
    }

    bool TakesNewRecords() const
    {
        if (!m_content.listed || m_content.rows.empty()) {
            return m_content.listed;
        }
        try {
            const std::vector<std::string>& last = m_content.rows.back().texts;
            return !last.empty() && ToInt32(last[0]) != std::numeric_limits<std::int32_t>::max();
        } catch (const Error&) {
            return false;
        }
    }

    /// Adds a new record.
    void Append()
    {
        if (!m_file.get) {
            return;
        }
        Record record;
        Require(m_file.get(m_sql, 0, record) == succeeded, "key 0 returns the template");
        record.SetText(1, m_text);
        const std::string before = OnDisk();
        const bool expected = TakesNewRecords();
        Require((m_file.update(m_sql, record) == succeeded) == expected,
                "a record is added if the last key is a number");
        if (!expected) {
            CheckUnchanged(before);
            return;
        }
        const std::int32_t last = m_content.rows.empty() ? 0 : ToInt32(m_content.rows.back().texts[0]);
        Require(record.Text(0) == std::to_string(last + 1), "a new record gets the next number");
        m_content.rows.push_back(RowOf(m_file, record.View()));
        CheckSaved();
    }

    /// Removes the first and the last record, and one that does not exist.
    void Remove()
    {
        if (!m_file.remove) {
            return;
        }
        std::vector<std::int16_t> numbers{std::numeric_limits<std::int16_t>::min()};
        for (std::size_t row = 0; row < m_content.rows.size(); ++row) {
            const auto number = NumberOf(m_content.rows[row].key.value_or(""));
            if (number && (row == 0 || row + 1 == m_content.rows.size())) {
                numbers.push_back(*number);
            }
        }
        for (const std::int16_t number : numbers) {
            if (const auto found = Found(std::to_string(number)); found != m_content.rows.end()) {
                m_content.rows.erase(found);
            }
            Require(m_file.remove(m_sql, number) == succeeded,
                    "removing succeeds even if the key does not exist");
            CheckSaved();
        }
    }

    /// Checks the contents after the next start of the program.
    void CheckReopened()
    {
        Require(m_sql.DeInit() == succeeded && m_sql.Init() == succeeded, "the files are loaded again");
        CheckList();
        Read();
        m_folder.CheckOthers(m_file.name);
    }

    const ShippedFolder& m_folder;
    const File& m_file;
    std::string_view m_bytes;
    std::string m_text; ///< is written into records
    Content m_content;  ///< the expected contents of the file
    std::unique_ptr<FileOperations> m_operations = SystemFileOperations();
    cSQL m_sql{m_folder.programFolder, *m_operations};
};

} // namespace

/// The first byte selects a file; the rest is its contents.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const ShippedFolder folder;
    if (size > 0) {
        const File& file = Files()[*data % Files().size()];
        OperationsCheck(folder, file, BytesOf(data + 1, size - 1)).Run();
        folder.Restore(file.name);
    }
    return 0;
}
