#include "cSQL.h"
#include "store/EntryFields.h"
#include "store/RecordLayouts.h"

#include <algorithm>
#include <utility>

namespace Tarno
{

std::vector<FileProblem> cSQL::FileProblems() const
{
    std::vector<FileProblem> problems;
    for (const DataFile* file :
         {&m_entries, &m_locations, &m_fields, &m_entryBlank, &m_locationBlank, &m_reports, &m_reportBlank}) {
        if (!file->Problem().empty()) {
            problems.push_back({file->Name(), file->Problem()});
        }
    }
    return problems;
}

std::vector<RecordTitle> cSQL::ShortRecords() const
{
    std::vector<RecordTitle> titles;
    for (const auto& [file, count] :
         {std::pair<const DataFile&, std::size_t>(m_entries, EntryField::Count),
          std::pair<const DataFile&, std::size_t>(m_locations, LocationField::Count),
          std::pair<const DataFile&, std::size_t>(m_fields, FieldField::Count),
          std::pair<const DataFile&, std::size_t>(m_reports, ReportField::Count)}) {
        if (!file.Problem().empty()) {
            continue;
        }
        for (const RecordView& record : file.Records().List()) {
            if (!record.Has(count - 1)) {
                titles.push_back(TitleOf(file, record));
            }
        }
    }
    return titles;
}

bool cSQL::HasSaved() const
{
    const auto files = {&m_entries, &m_locations, &m_fields, &m_reports};
    return std::any_of(files.begin(), files.end(), [](const DataFile* file) { return file->WasSaved(); });
}

std::vector<UnsavedChange> cSQL::UnsavedChanges() const
{
    std::vector<UnsavedChange> changes;
    for (const DataFile* file : {&m_entries, &m_locations, &m_fields, &m_reports}) {
        for (const auto& [key, before] : file->Records().Changed()) {
            const pugi::xml_node record = file->Records().Find(key);
            const Record deleted = Record::FromXml(before);
            changes.push_back({.record = TitleOf(*file, record ? RecordView(record) : deleted.View()),
                               .isDeletion = !record,
                               .file = file->Name()});
        }
        for (const pugi::xml_node& record : file->Records().Appended()) {
            changes.push_back(
                {.record = TitleOf(*file, RecordView(record)), .isDeletion = false, .file = file->Name()});
        }
    }
    return changes;
}

RecordTitle cSQL::TitleOf(const DataFile& in, const RecordView& record) const
{
    using Kind = RecordTitle::Kind;
    RecordTitle title{.kind = KindOf(in), .key = record.Text(0), .date = {}, .name = record.Text(1)};
    if (title.kind == Kind::Trip) {
        title.date = record.Text(EntryField::StartDate);
        const RecordView location(m_locations.Records().Find(record.Text(EntryField::LocNo)));
        title.name = location.Text(LocationField::LocName);
    } else if (title.kind == Kind::Column) {
        title.name = record.Text(FieldField::Desc);
    }
    return title;
}

RecordTitle::Kind cSQL::KindOf(const DataFile& in) const
{
    using Kind = RecordTitle::Kind;
    return &in == &m_entries     ? Kind::Trip
           : &in == &m_locations ? Kind::Location
           : &in == &m_fields    ? Kind::Column
                                 : Kind::Report;
}

} // namespace Tarno
