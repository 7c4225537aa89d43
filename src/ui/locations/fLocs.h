#pragma once

#include "ui/common/Program.h"

#include <QDialog>

#include <cstdint>
#include <memory>

namespace Tarno
{

namespace Ui
{
class fLocs;
}

/// The window that lists all fishing locations, with commands to add, edit, delete and print them.
class fLocs : public QDialog
{
    Q_OBJECT

public:
    /// Loads the list. What `program` refers to must outlive the window.
    fLocs(const Program& program, QWidget* parent);
    fLocs(const fLocs&) = delete;
    fLocs& operator=(const fLocs&) = delete;
    ~fLocs() override;

private:
    void LoadLocations();
    void SetControls();
    void Add();
    void Edit();
    void Delete();
    void lvwLocs_MouseDown();
    void lvwLocs_DblClick();
    void cmdPrint_Click();
    void cmdOK_Click();
    void ShowLocationDialog(std::int16_t locationNumber, bool deleteMode);
    std::int16_t SelectedLocation() const;

    const Program& m_program;
    std::unique_ptr<Ui::fLocs> m_ui;
};

} // namespace Tarno
