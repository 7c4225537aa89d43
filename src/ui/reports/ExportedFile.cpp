#include "ExportedFile.h"

#include "ui/common/Handle.h"

#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace Tarno
{

ExportedFile::ExportedFile(ProgramStarter& programs, QWidget* parent)
    : QFrame(parent), m_programs(programs), m_path(new QLineEdit(this))
{
    setObjectName(QStringLiteral("frExported"));
    auto* caption = new QLabel(QStringLiteral("Exported to"), this);
    caption->setObjectName(QStringLiteral("lblExported"));
    m_path->setObjectName(QStringLiteral("txtExported"));
    m_path->setAccessibleName(caption->text());
    m_path->setReadOnly(true);
    auto* folder = new QPushButton(QStringLiteral("Open &Folder"), this);
    folder->setObjectName(QStringLiteral("cmdOpenFolder"));
    folder->setAutoDefault(false); // Enter in the boxes of the toolbar has another meaning
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(caption);
    layout->addWidget(m_path);
    layout->addWidget(folder);
    Handle(folder, &QPushButton::clicked, "Click", this,
           [this] { m_programs.OpenFolder(QDir::toNativeSeparators(QFileInfo(m_path->text()).path())); });
    hide();
}

void ExportedFile::ShowFile(const QString& path)
{
    m_path->setText(path); // a path that is too long shows its end
    m_path->setToolTip(path);
    show();
}

} // namespace Tarno
