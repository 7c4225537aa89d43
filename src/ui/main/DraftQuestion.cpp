#include "DraftQuestion.h"

#include "qt/Strings.h"
#include "store/EntryFields.h"
#include "store/RecordLayouts.h"
#include "ui/common/Notices.h"

#include <QStringList>

namespace Tarno
{

namespace
{

/// Returns the value at `position`, or an empty text if a draft of an older version does not have it.
std::string ValueAt(const StoredTexts& values, std::size_t position)
{
    return position < values.size() ? values[position] : std::string();
}

RecordTitle TitleOf(const Draft& draft, const StoredTexts& values, const PlaceNames& places)
{
    if (draft.kind == RecordTitle::Kind::Location) {
        return {draft.kind, draft.key, {}, ValueAt(values, LocationField::LocName)};
    }
    return {draft.kind, draft.key, ValueAt(values, EntryField::StartDate),
            places.Of(ValueAt(values, EntryField::LocNo))};
}

/// Returns for example "a trip (2026-11-14, Pittwater)".
QString DescribeNew(const RecordTitle& record)
{
    QStringList details;
    for (const QString& detail : {FromUtf8(record.date), ShownInOneLine(record.name)}) {
        if (!detail.isEmpty()) {
            details << detail;
        }
    }
    return (record.kind == RecordTitle::Kind::Trip ? QStringLiteral("a trip")
                                                   : QStringLiteral("a location")) +
           (details.isEmpty() ? QString()
                              : QStringLiteral(" (") + details.join(QStringLiteral(", ")) + QLatin1Char(')'));
}

} // namespace

Question QuestionAbout(const Draft& draft, DraftState state, const PlaceNames& places)
{
    const bool isTrip = draft.kind == RecordTitle::Kind::Trip;
    const QString record = isTrip ? QStringLiteral("trip") : QStringLiteral("location");
    QString text = QStringLiteral("You were ") +
                   (state == DraftState::NewRecord
                        ? QStringLiteral("adding ") + DescribeNew(TitleOf(draft, draft.values, places))
                        : QStringLiteral("editing ") + DescribeRecord(TitleOf(draft, draft.before, places))) +
                   QStringLiteral(" when Tarno ended. ");
    if (state == DraftState::ChangedSince) {
        text += QStringLiteral("This %1 was changed after that. If you continue and save, your version "
                               "replaces it. ")
                    .arg(record);
    } else if (state == DraftState::RecordDeleted) {
        text +=
            QStringLiteral("This %1 was deleted after that. If you continue and save, it is added again. ")
                .arg(record);
    }
    if (draft.number > 1) { // there are several drafts of this record
        text += QStringLiteral("This draft is from %1. ").arg(FromUtf8(draft.written));
    }
    return {.text = text + QStringLiteral("Continue?"),
            .title = QStringLiteral("Changes Not Saved"),
            .icon = Icon::Question,
            .buttons = Buttons::ContinueDiscardLater,
            .byDefault = Button::Continue};
}

} // namespace Tarno
