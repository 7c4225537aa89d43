#include "EntryGeneralPage.h"

#include "ui/common/BoxWidth.h"
#include "ui_EntryGeneralPage.h"

EntryGeneralPage::EntryGeneralPage(QWidget* parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::EntryGeneralPage>())
{
    m_ui->setupUi(this);
    FitBoxes({m_ui->txtStart, m_ui->txtEnd}, QStringLiteral("2008-08-08"));
    FitBoxes({m_ui->txtTStart, m_ui->txtTEnd, m_ui->txtTideLow, m_ui->txtTideHigh, m_ui->txtSunRise,
              m_ui->txtSunSet, m_ui->txtMoonRise, m_ui->txtMoonSet, m_ui->txtMoon, m_ui->txtMajor1,
              m_ui->txtMajor2, m_ui->txtMinor1, m_ui->txtMinor2},
             QStringLiteral("never"));
}

EntryGeneralPage::~EntryGeneralPage() = default;
