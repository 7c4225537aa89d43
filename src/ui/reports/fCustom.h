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
/// invalid ones are reported when a report uses them.
class fCustom : public QDialog
{
    Q_OBJECT

public:
    /// The members of `program` must outlive the window.
    fCustom(const Program& program, QWidget* parent);
    fCustom(const fCustom&) = delete;
    fCustom& operator=(const fCustom&) = delete;
    ~fCustom() override;

    /// Returns false, because on Windows a window with height-for-width can grow beyond the screen.
    /// TextHeight keeps wrapped labels high enough.
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
    bool m_loading = false;                                  ///< whether the program is filling the boxes
    bool m_changed = false;                                  ///< never cleared; see docs/quirks.md
    int m_shown = -1;                                        ///< row of the field in the boxes, or -1
};

} // namespace Tarno
