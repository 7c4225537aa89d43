#pragma once

#include "ui/common/Program.h"

#include <QWidget>

#include <memory>

namespace Tarno
{

class LeaveGuard;
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

private:
    std::unique_ptr<Ui::EntryCommentsPage> m_ui;
};

} // namespace Tarno
