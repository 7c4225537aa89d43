#pragma once

#include <QWidget>

#include <memory>

namespace Tarno
{

class RecordBinder;

namespace Ui
{
class EntryWeatherPage;
}

/// The page "Weather" of the entry editor: weather, wind, water, temperatures, air pressure, observations.
class EntryWeatherPage : public QWidget
{
    Q_OBJECT

public:
    explicit EntryWeatherPage(QWidget* parent = nullptr);
    EntryWeatherPage(const EntryWeatherPage&) = delete;
    EntryWeatherPage& operator=(const EntryWeatherPage&) = delete;
    ~EntryWeatherPage() override;

    /// Binds the controls. Call once. The binder must outlive the page.
    void Attach(RecordBinder& binder);

private:
    std::unique_ptr<Ui::EntryWeatherPage> m_ui;
};

} // namespace Tarno
