#include "EntryCommentsPage.h"

#include "ui_EntryCommentsPage.h"

EntryCommentsPage::EntryCommentsPage(QWidget* parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::EntryCommentsPage>())
{
    m_ui->setupUi(this);
}

EntryCommentsPage::~EntryCommentsPage() = default;
