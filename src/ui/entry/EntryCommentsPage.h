#pragma once

#include "ui/common/Program.h"

#include <QWidget>

#include <memory>
#include <vector>

namespace Tarno
{

class LeaveGuard;
class LineProposals;
class RecordBinder;

namespace Ui
{
class EntryCommentsPage;
}

/// The page "Comments" of the entry editor: species, bait and methods, with their pick lists.
class EntryCommentsPage : public QWidget
{
    Q_OBJECT

public:
    explicit EntryCommentsPage(QWidget* parent = nullptr);
    EntryCommentsPage(const EntryCommentsPage&) = delete;
    EntryCommentsPage& operator=(const EntryCommentsPage&) = delete;
    ~EntryCommentsPage() override;

    /// Binds the controls. Call once. The references must outlive the page.
    void Attach(const Program& program, RecordBinder& binder, LeaveGuard& guard);

    /// Reads the lines that are proposed while the user types again, because the log has changed.
    void ForgetLines();

private:
    std::unique_ptr<Ui::EntryCommentsPage> m_ui;
    std::vector<std::unique_ptr<LineProposals>> m_proposals;
};

} // namespace Tarno
