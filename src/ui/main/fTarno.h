#pragma once

#include "ui/common/Program.h"

#include <QMainWindow>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class QAction;
class QMenu;

namespace Tarno
{

namespace Ui
{
class fTarno;
}

/// The main window: the list of all log entries and the commands that open the other windows.
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

Q_SIGNALS:
    /// The user confirmed the exit and the data access was released.
    void ExitConfirmed();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Command;
    enum class Needs { Nothing, Location, Entry };

    void Form_Load();
    void MakeCommands();
    void AddCommand(QAction* button, const char* icon, const char* menuCaption, Needs needs,
                    void (fTarno::*run)());
    void ConnectHandlers();
    void LoadEntryList();
    void SetControls(bool usable);
    void EnableCommands();
    QString Hint(bool anyLocation) const;
    void lvwEntry_DblClick();
    void lvwEntry_MouseDown(Qt::MouseButton button, const QPoint& position);
    void cmdExit_Click();
    bool ConfirmLosingChanges();
    void EditSelected(const char* routine, bool deleteMode);
    std::int16_t SelectedEntry() const;
    template <typename Body>
    void WithListGreyed(const char* routine, Body&& body);

    const Program& m_program;
    std::unique_ptr<Ui::fTarno> m_ui;
    QMenu* m_popUp;
    std::vector<Command> m_commands; ///< each with the condition for being enabled
    bool m_exitConfirmed = false;
};

} // namespace Tarno
