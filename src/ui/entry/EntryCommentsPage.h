#pragma once

#include <QWidget>

#include <memory>

namespace Ui
{
class EntryCommentsPage;
}

/// The page "Comments" of the entry editor: its layout, nothing more.
class EntryCommentsPage : public QWidget
{
    Q_OBJECT

public:
    explicit EntryCommentsPage(QWidget* parent = nullptr);
    EntryCommentsPage(const EntryCommentsPage&) = delete;
    EntryCommentsPage& operator=(const EntryCommentsPage&) = delete;
    ~EntryCommentsPage() override;

private:
    std::unique_ptr<Ui::EntryCommentsPage> m_ui;
};
