// A window with the controls of Tarno's main window but without their functions: the minimum that showing
// them with Qt costs.

#include "FirstPaint.h"

#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QStandardItemModel>
#include <QToolBar>
#include <QTreeView>
#include <QVBoxLayout>

using namespace Tarno;

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    const FirstPaint firstPaint;
    QMainWindow window;
    auto* toolBar = new QToolBar(&window);
    toolBar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    for (const char* name : {"add", "edit", "delete", "locations", "reports", "tides", "about"}) {
        toolBar->addAction(QIcon(QStringLiteral(TARNO_SHIPPED_DATA "/icons/%1.svg").arg(QLatin1String(name))),
                           QLatin1String(name));
    }
    window.addToolBar(toolBar);
    auto* list = new QTreeView;
    QStandardItemModel model(0, 9);
    for (int column = 0; column < model.columnCount(); ++column) {
        model.setHeaderData(column, Qt::Horizontal, QStringLiteral("Heading"));
    }
    list->setModel(&model);
    auto* middle = new QWidget;
    auto* layout = new QVBoxLayout(middle);
    layout->addWidget(list);
    layout->addWidget(new QLabel(QStringLiteral("right click list for options")));
    layout->addWidget(new QPushButton(QStringLiteral("E&xit")));
    window.setCentralWidget(middle);
    window.resize(900, 500);
    window.show();
    return QApplication::exec();
}
