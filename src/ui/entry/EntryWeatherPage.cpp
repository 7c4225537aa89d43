#include "EntryWeatherPage.h"

#include "EntryBindings.h"
#include "ui_EntryWeatherPage.h"

namespace Tarno
{

EntryWeatherPage::EntryWeatherPage(QWidget* parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::EntryWeatherPage>())
{
    m_ui->setupUi(this);
    setFocusProxy(m_ui->optWeather_0);
}

EntryWeatherPage::~EntryWeatherPage() = default;

void EntryWeatherPage::Attach(RecordBinder& binder)
{
    BindEntryBoxes(binder, {{EntryField::AirTemp, m_ui->txtAirTemp},
                            {EntryField::WaterTemp, m_ui->txtWaterTemp},
                            {EntryField::PressureReading, m_ui->txtPressure}});
    BindEntryLines(binder, {{EntryField::Obbos, m_ui->txtObbos}});
    BindEntryOptions(binder, this,
                     {{EntryField::WindDir, "optWindDir"},
                      {EntryField::WindStrength, "optWindStr"},
                      {EntryField::Weather, "optWeather"},
                      {EntryField::WaterClarity, "optClarity"},
                      {EntryField::AirPressure, "optPressure"}});
}

} // namespace Tarno
