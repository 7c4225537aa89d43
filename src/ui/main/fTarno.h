#pragma once

#include "ui/common/Program.h"

#include <QMainWindow>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace Tarno
{

class LogCommands;
class LogView;
class UndoMenu;
class fEntry;

namespace Ui
{
class fTarno;
}

/// The main window: the list of all log entries, finding them, and the commands that open the other windows.
class fTarno : public QMainWindow
{
    Q_OBJECT

public:
    /// Loads the list. What `program` refers to must outlive the window.
    explicit fTarno(const Program& program);
    fTarno(const fTarno&) = delete;
    fTarno& operator=(const fTarno&) = delete;
    ~fTarno() override;

    // Commands. Errors are reported and leave the window usable.

    void Add();
    void Edit();
    void Delete();
    void Locations();
    void Reports();
    void Tides();
    void About();
    void Repeat();
    void TripSheet();
    void ReportFound();
    void ShowDetails();
    void Calendar();
    void Statistics();
    void Restore();

    /// Asks about each draft of this log that an earlier run has left, and continues with those that the user
    /// wants.
    void OfferDrafts();

Q_SIGNALS:
    /// The user confirmed the exit and the data access was released.
    void ExitConfirmed();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Form_Load();
    void AddCommands();
    void AddTransferCommands();
    void ConnectHandlers();
    void EnableCommands();
    void ShowChanges();
    void ShowSelectedTrip();
    void HidePane(QWidget* pane);
    void lvwEntry_DblClick();
    void lvwEntry_MouseDown(Qt::MouseButton button, const QPoint& position);
    void cmdExit_Click();
    void EditSelected(const char* routine, bool deleteMode);
    void EditTrip(const char* routine, const std::function<void(fEntry& editor)>& edit);
    void ContinueDraft(const Draft& draft);
    void SetControls(bool usable);
    void WithListGreyed(const char* routine, const std::function<void()>& body);

    const Program& m_program;
    std::unique_ptr<Ui::fTarno> m_ui;
    LogCommands* m_commands;
    LogView* m_log;
    UndoMenu* m_undo;
    std::optional<std::string> m_detailed; ///< key of the trip that the details show
    bool m_exitConfirmed = false;
};

} // namespace Tarno
