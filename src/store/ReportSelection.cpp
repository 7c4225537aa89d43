#include "ReportSelection.h"

#include "core/Text.h"
#include "store/RecordLayouts.h"

namespace Tarno
{

namespace
{

constexpr char separator = ',';

} // namespace

ReportSelection ReadSelection(const RecordView& report)
{
    return {.names = Split(report.Text(ReportField::Fields), separator),
            .numbers = Split(report.Text(ReportField::FieldKeys), separator)};
}

void WriteSelection(const ReportSelection& selection, Record& report)
{
    report.SetText(ReportField::Fields, Join(selection.names, separator));
    report.SetText(ReportField::FieldKeys, Join(selection.numbers, separator));
}

RecordList DefinitionsOf(const std::vector<std::int32_t>& numbers, const RecordList& fields)
{
    RecordList definitions;
    for (const std::int32_t number : numbers) {
        definitions.push_back(RecordAt(fields, std::int64_t(number) - 1));
    }
    return definitions;
}

ReportSelection SelectionOf(const std::vector<std::int32_t>& numbers, const RecordList& fields)
{
    ReportSelection selection;
    for (const RecordView& definition : DefinitionsOf(numbers, fields)) {
        selection.names.push_back(definition.Text(FieldField::FieldName));
    }
    for (const std::int32_t number : numbers) {
        selection.numbers.push_back(std::to_string(number));
    }
    return selection;
}

} // namespace Tarno
