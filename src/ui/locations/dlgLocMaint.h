#pragma once

#include "ui/common/EditingDialog.h"

#include <cstdint>
#include <memory>

namespace Tarno
{

namespace Ui
{
class dlgLocMaint;
}

/// The window in which one fishing location is added, changed or deleted.
class dlgLocMaint : public EditingDialog
{
    Q_OBJECT

public:
    /// What `program` refers to must outlive the window.
    dlgLocMaint(const Program& program, QWidget* parent);
    dlgLocMaint(const dlgLocMaint&) = delete;
    dlgLocMaint& operator=(const dlgLocMaint&) = delete;
    ~dlgLocMaint() override;

    /// Edits the location `locationNumber`, or a new one for 0, and returns when the window is closed. In
    /// delete mode, only asks whether to delete the location and never shows the window.
    void SetData(std::int16_t locationNumber, bool deleteMode);

    /// Edits the location of the draft with the values of the draft, a new one if it is not in the log, and
    /// returns when the window is closed. It counts as changed.
    void ContinueDraft(const Draft& draft);

    /// TextHeight keeps wrapped labels high enough. If this returned true, Windows would make the window
    /// higher than the screen.
    bool hasHeightForWidth() const override { return false; }

private:
    void ShowLocation(bool isNew);
    void StartEditing();
    void ShowRanges();
    void DeleteAfterQuestion(std::int16_t locationNumber);
    void chkDST_Click();

    std::unique_ptr<Ui::dlgLocMaint> m_ui;
};

} // namespace Tarno
