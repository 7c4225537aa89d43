#pragma once

#include <QWidget>

#include <memory>

namespace Ui
{
class EntryGeneralPage;
}

/// The page "General" of the entry editor: its layout, nothing more.
class EntryGeneralPage : public QWidget
{
    Q_OBJECT

public:
    explicit EntryGeneralPage(QWidget* parent = nullptr);
    EntryGeneralPage(const EntryGeneralPage&) = delete;
    EntryGeneralPage& operator=(const EntryGeneralPage&) = delete;
    ~EntryGeneralPage() override;

private:
    std::unique_ptr<Ui::EntryGeneralPage> m_ui;
};
