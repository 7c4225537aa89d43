#pragma once

#include "ui/common/RecordBinder.h"

/// Binds the entry editor's boxes and option groups to the children of its record, with the rules of its
/// dates and times. Location, moon phase and picture have handlers of their own.
class EntryBinder : public RecordBinder
{
    Q_OBJECT

public:
    EntryBinder(QWidget* window, EditedRecord& record, LeaveGuard& guard);

protected:
    void Accepted(std::size_t position) override;

private:
    void BindBoxes();
    void BindStep(QWidget* window, const char* label, std::size_t position, int days);
    void StepDate(std::size_t position, int days);
    void OrderDates();
};
