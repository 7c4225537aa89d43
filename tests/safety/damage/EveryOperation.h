#pragma once

#include "core/ErrorLog.h"
#include "store/cSQL.h"
#include "support/ScriptedFileOperations.h"
#include "support/StdStrings.h"
#include "support/TemporaryFolder.h"

#include <QXmlStreamReader>

#include <algorithm>
#include <array>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Tarno
{

// Runs every operation of the data access on a folder in which one file may be damaged.

inline constexpr std::array dataFiles{"tarno.xml",         "field.xml", "location.xml", "tarnoblank.xml",
                                      "locationblank.xml", "Rpt.xml",   "RptBlank.xml"};

/// An operation and the file that it needs. The operations are in an order in which all of them succeed on
/// valid files: a new record is added before the record with key 1 is replaced, and that record is removed
/// last.
struct Operation {
    std::string routine;
    std::string file;
    std::function<bool(cSQL&)> succeeds;
};

/// The result of an operation.
struct Outcome {
    const Operation* operation;
    bool succeeded;
    std::vector<std::string> reports;
};

inline std::string ShippedFile(const std::string& name)
{
    return ReadWholeFile(TARNO_SHIPPED_DATA "/" + name);
}

/// Writes the seven shipped data files to `folder`.
inline void CopyShipped(const TemporaryFolder& folder)
{
    for (const char* name : dataFiles) {
        folder.Write(name, ShippedFile(name));
    }
}

/// Returns the data file `name` with some records.
inline std::string FileWithRecords(const std::string& name)
{
    const bool hasSample = name == "tarno.xml" || name == "location.xml" || name == "Rpt.xml";
    return ShippedFile(hasSample ? "sample/" + name : name);
}

class OperationTrial
{
public:
    /// Takes the records that the operations save from the shipped files.
    OperationTrial()
    {
        const TemporaryFolder folder;
        CopyShipped(folder);
        const ProgramFolder programFolder(folder.Path());
        ScriptedFileOperations system;
        cSQL sql(programFolder, system);
        RecordList fields;
        if (sql.Init() != succeeded || sql.EntryGet(0, m_entry) != succeeded ||
            sql.LocationGet(0, m_location) != succeeded || sql.ReportGet(0, m_report) != succeeded ||
            sql.FieldList(fields) != succeeded) {
            qFatal("the shipped files cannot be read");
        }
        m_field = Record(fields.front());
        AddOperations("Entry", "tarno.xml", "tarnoblank.xml", m_entry, &cSQL::EntryList, &cSQL::EntryGet,
                      &cSQL::EntryUpdate, &cSQL::EntryDelete);
        AddOperations("Location", "location.xml", "locationblank.xml", m_location, &cSQL::LocationList,
                      &cSQL::LocationGet, &cSQL::LocationUpdate, &cSQL::LocationDelete);
        AddOperations("Report", "Rpt.xml", "RptBlank.xml", m_report, &cSQL::ReportList, &cSQL::ReportGet,
                      &cSQL::ReportUpdate, &cSQL::ReportDelete);
        Add("FieldList", "field.xml", [](cSQL& data) {
            RecordList list;
            return data.FieldList(list) == succeeded;
        });
        Add("FieldUpdate", "field.xml",
            [this](cSQL& data) { return data.FieldUpdate(m_field) == succeeded; });
        ErrorReporter::Instance().SetShowMessage(
            [this](const std::string& text, const std::string& /*title*/) {
                m_reports.push_back(text);
                ErrorReporter::Instance().AllowRepetition();
            });
    }

    OperationTrial(const OperationTrial&) = delete;
    OperationTrial& operator=(const OperationTrial&) = delete;

    ~OperationTrial() { ErrorReporter::Instance().Reset(); }

    /// Loads the files in `folder` and runs the operations that need `file`, or all operations if `all` is
    /// true. Returns a description of violated guarantees that apply to any file, or an empty string.
    std::string Run(const std::string& folder, const std::string& file, bool all)
    {
        const ProgramFolder programFolder(folder);
        ScriptedFileOperations system;
        cSQL sql(programFolder, system);
        m_reports.clear();
        m_outcomes.clear();
        if (sql.Init() != succeeded || !m_reports.empty()) {
            return "Init fails";
        }
        std::string broken;
        for (const Operation& operation : m_operations) {
            if (!all && operation.file != file) {
                continue;
            }
            m_reports.clear();
            const bool succeeds = operation.succeeds(sql);
            m_outcomes.push_back({&operation, succeeds, m_reports});
            if (succeeds != m_reports.empty()) {
                broken +=
                    operation.routine + (succeeds ? " reports an error; " : " fails without a report; ");
            } else if (!succeeds &&
                       m_reports.front().find("cSQL." + operation.routine) == std::string::npos) {
                broken += operation.routine + " is reported under another name; ";
            }
            ++m_count;
        }
        return sql.UnsavedChanges().empty() ? broken : broken + "something is unsaved; ";
    }

    /// Returns the routines that need `file` and succeeded (or failed) in the last Run.
    std::string Routines(const std::string& file, bool succeeded) const
    {
        std::string routines;
        for (const Outcome& outcome : m_outcomes) {
            if (outcome.operation->file == file && outcome.succeeded == succeeded) {
                routines += outcome.operation->routine + " ";
            }
        }
        return routines;
    }

    /// Like Run, for a file that cannot be read: operations that need it must fail, all others must succeed.
    std::string RunOnUnreadable(const std::string& folder, const std::string& file, bool all)
    {
        std::string broken = Run(folder, file, all);
        if (const std::string working = Routines(file, true); !working.empty()) {
            broken += "succeeded without the file: " + working;
        }
        for (const Outcome& outcome : m_outcomes) {
            if (outcome.operation->file != file && !outcome.succeeded) {
                broken += "fails although its file is valid: " + outcome.operation->routine + "; ";
            }
        }
        return broken;
    }

    /// Like Run, for a file that can be read: all operations must succeed.
    std::string RunOnReadable(const std::string& folder, const std::string& file, bool all)
    {
        const std::string broken = Run(folder, file, all);
        const std::string failing = Routines(file, false);
        return failing.empty() ? broken : broken + "failed on a valid file: " + failing;
    }

    /// Returns the number of operations run so far.
    int Count() const { return m_count; }

private:
    void Add(const std::string& routine, const std::string& file, std::function<bool(cSQL&)> succeeds)
    {
        m_operations.push_back({routine, file, std::move(succeeds)});
    }

    void AddOperations(const std::string& name, const std::string& file, const std::string& blank,
                       const Record& made, Status (cSQL::*list)(RecordList&) const,
                       Status (cSQL::*get)(std::int16_t, Record&) const, Status (cSQL::*update)(Record&),
                       Status (cSQL::*remove)(std::int16_t))
    {
        Add(name + "List", file, [list](cSQL& sql) {
            RecordList records;
            return (sql.*list)(records) == succeeded;
        });
        Add(name + "Get", blank, [get](cSQL& sql) {
            Record record;
            return (sql.*get)(0, record) == succeeded;
        });
        for (const char* key : {"0", "1"}) {
            Add(name + "Update", file, [update, key, &made](cSQL& sql) {
                Record record = made;
                record.SetText(0, key);
                return (sql.*update)(record) == succeeded;
            });
        }
        Add(name + "Get", file, [get](cSQL& sql) {
            Record record;
            return (sql.*get)(1, record) == succeeded;
        });
        if (name == "Entry") {
            Add("ReportLogData", file,
                [](cSQL& sql) { return sql.ReportLogData("StartDate,Obbos", "1,31", 0) == succeeded; });
        } else if (name == "Location") { // LocationNameGet returns "1" on failure
            Add("LocationNameGet", file, [](cSQL& sql) { return sql.LocationNameGet("1") != "1"; });
        }
        Add(name + "Delete", file, [remove](cSQL& sql) { return (sql.*remove)(1) == succeeded; });
    }

    Record m_entry;
    Record m_location;
    Record m_report;
    Record m_field;
    std::vector<Operation> m_operations;
    std::vector<std::string> m_reports;
    std::vector<Outcome> m_outcomes;
    int m_count = 0;
};

/// What another reader of XML finds in a file.
struct XmlReading {
    std::string fault; ///< why the file is not a data file, or empty
    std::vector<std::string>
        content; ///< names and texts in document order, without white space between elements
};

/// Reads `bytes` with a parser that is independent of the program.
inline XmlReading ReadXml(const std::string& bytes)
{
    XmlReading reading;
    QXmlStreamReader reader(QByteArray::fromStdString(bytes));
    reader.setNamespaceProcessing(false);
    bool first = true;
    bool afterStart = false;
    std::string blanks; // white space, which counts only if the element contains nothing else
    while (!reader.atEnd()) {
        const auto token = reader.readNext();
        const std::string text = reader.text().toString().toStdString();
        switch (token) {
        case QXmlStreamReader::StartElement: {
            if (first && reader.name() != QLatin1String("data")) {
                reading.fault = "another root";
            }
            first = false;
            std::string tag = "<" + reader.name().toString().toStdString();
            for (const QXmlStreamAttribute& attribute : reader.attributes()) {
                tag += " " + attribute.name().toString().toStdString() + "='" +
                       attribute.value().toString().toStdString() + "'";
            }
            reading.content.push_back(tag);
            blanks.clear();
            break;
        }
        case QXmlStreamReader::EndElement:
            if (afterStart && !blanks.empty()) {
                reading.content.push_back(blanks);
            }
            blanks.clear();
            reading.content.push_back(">");
            break;
        case QXmlStreamReader::Characters:
            if (reader.isWhitespace() && !reader.isCDATA()) {
                blanks = afterStart ? text : std::string();
                std::replace(blanks.begin(), blanks.end(), '\r', '\n');
                continue;
            }
            reading.content.push_back(text);
            // the program keeps carriage returns, but this reader converts unescaped ones to line feeds
            std::replace(reading.content.back().begin(), reading.content.back().end(), '\r', '\n');
            break;
        case QXmlStreamReader::Comment:
            reading.content.push_back("<!--" + text);
            break;
        case QXmlStreamReader::ProcessingInstruction:
            reading.content.push_back("<?" + reader.processingInstructionTarget().toString().toStdString() +
                                      " " + reader.processingInstructionData().toString().toStdString());
            break;
        default:
            break;
        }
        afterStart = token == QXmlStreamReader::StartElement;
    }
    if (reader.hasError()) {
        reading.fault = reader.errorString().toStdString();
    }
    return reading;
}

} // namespace Tarno
