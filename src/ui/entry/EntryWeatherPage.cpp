#include "EntryWeatherPage.h"

#include "ui_EntryWeatherPage.h"

EntryWeatherPage::EntryWeatherPage(QWidget* parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::EntryWeatherPage>())
{
    m_ui->setupUi(this);
}

EntryWeatherPage::~EntryWeatherPage() = default;
