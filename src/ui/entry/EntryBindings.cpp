#include "EntryBindings.h"

#include "FieldRules.h"
#include "ui/common/KeyFilter.h"

namespace Tarno
{

namespace
{

/// Adapts a field rule to the check of the binder.
RecordBinder::Check CheckWith(void (*rule)(std::string& text, bool& ok))
{
    return [rule](std::string& text) {
        bool ok = false;
        rule(text, ok);
        return ok;
    };
}

} // namespace

void BindEntryBoxes(RecordBinder& binder, std::initializer_list<EntryBox> boxes)
{
    for (const auto& [field, box] : boxes) {
        switch (entryFields.at(field).kind) {
        case FieldKind::Date:
            binder.BindBox(
                field, box, CheckWith(CheckDateFormat),
                QStringLiteral("This date does not exist. Use year-month-day, for example 2026-03-31."));
            new KeyFilter(box, QStringLiteral("-."));
            break;
        case FieldKind::Time:
            binder.BindBox(field, box, CheckWith(CheckTimeFormat),
                           QStringLiteral("This time does not exist. Use hours:minutes, for example 05:45."),
                           CheckWith(CheckTimeFormatSilently));
            new KeyFilter(box, QStringLiteral(":."));
            break;
        default:
            binder.BindBox(field, box);
        }
    }
}

void BindEntryOptions(RecordBinder& binder, QWidget* page, std::initializer_list<EntryOptions> groups)
{
    for (const auto& [field, group] : groups) {
        binder.BindOptions(field, page, group);
    }
}

void BindEntryLines(RecordBinder& binder, std::initializer_list<EntryLines> boxes)
{
    for (const auto& [field, box] : boxes) {
        binder.BindLines(field, box);
    }
}

} // namespace Tarno
