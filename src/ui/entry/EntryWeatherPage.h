#pragma once

#include <QWidget>

#include <memory>

namespace Ui
{
class EntryWeatherPage;
}

/// The page "Weather" of the entry editor: its layout, nothing more.
class EntryWeatherPage : public QWidget
{
    Q_OBJECT

public:
    explicit EntryWeatherPage(QWidget* parent = nullptr);
    EntryWeatherPage(const EntryWeatherPage&) = delete;
    EntryWeatherPage& operator=(const EntryWeatherPage&) = delete;
    ~EntryWeatherPage() override;

private:
    std::unique_ptr<Ui::EntryWeatherPage> m_ui;
};
