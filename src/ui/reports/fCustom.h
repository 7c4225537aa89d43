#pragma once

#include "ui/common/Program.h"

#include <QDialog>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

class QLineEdit;

namespace Tarno
{

namespace Ui
{
class fCustom;
}

/// The window for editing the descriptions, headings, widths and font sizes of the fields of the log report.
/// Edits are stored in the field file when another field is selected and on "OK". Values are stored as typed;
/// a report that cannot use them reports an error.
class fCustom : public QDialog
{
    Q_OBJECT

public:
    /// What `program` refers to must outlive the window.
    fCustom(const Program& program, QWidget* parent);
    fCustom(const fCustom&) = delete;
    fCustom& operator=(const fCustom&) = delete;
    ~fCustom() override;

    /// Wrapped labels are kept high enough by TextHeight. Windows makes a window that answers true as high as
    /// its layout would like to be, beyond the screen.
    bool hasHeightForWidth() const override { return false; }

private:
    void Form_Load();
    void lstField_Click();
    void cmdOK_Click();
    void Show(int row);
    Status Save(int row);
    bool StoreShown();

    const Program& m_program;
    std::unique_ptr<Ui::fCustom> m_ui;
    std::vector<std::pair<QLineEdit*, std::size_t>> m_boxes; ///< with the positions of their values
    bool m_loading = false;                                  ///< the boxes are being filled by the program
    bool m_changed = false; ///< never cleared: after the first edit, every selection stores what was shown
    int m_shown = -1;       ///< the row whose field the boxes show
};

} // namespace Tarno
