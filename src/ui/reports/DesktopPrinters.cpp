#include "DesktopPrinters.h"

#include "core/Error.h"
#include "core/Twips.h"

#include <QPageSetupDialog>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>

#include <algorithm>

namespace Tarno
{

namespace
{

constexpr qreal margin = 20; // millimetres

} // namespace

QPageLayout DesktopPrinters::DefaultPage()
{
    QPageLayout page = QPrinter().pageLayout();
    page.setUnits(QPageLayout::Millimeter);
    page.setOrientation(QPageLayout::Portrait);
    page.setMargins(QMarginsF(margin, margin, margin, margin));
    return page;
}

bool DesktopPrinters::Print(QWidget* parent, const PrintJob& job)
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(job.title);
    printer.setPageLayout(job.page);
    printer.setFullPage(true);
    QPrintDialog dialog(&printer, parent);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    dialog.setMinMax(1, job.pages);
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    const bool range = printer.printRange() == QPrinter::PageRange;
    const int first = range ? std::max(1, printer.fromPage()) : 1;
    const int last = range ? std::min(job.pages, printer.toPage()) : job.pages;
    QPainter painter;
    if (!painter.begin(&printer)) {
        throw Error(ErrorNumber::DeviceInputOutput);
    }
    for (int page = first; page <= last; ++page) {
        if (page > first && !printer.newPage()) {
            throw Error(ErrorNumber::DeviceInputOutput);
        }
        painter.save();
        const double scale = static_cast<double>(printer.resolution()) / twipsPerInch;
        painter.scale(scale, scale);
        job.paint(painter, page - 1);
        painter.restore();
    }
    if (!painter.end()) {
        throw Error(ErrorNumber::DeviceInputOutput);
    }
    return true;
}

bool DesktopPrinters::SetUpPage(QWidget* parent, QPageLayout& page)
{
    QPrinter printer;
    printer.setPageLayout(page);
    QPageSetupDialog dialog(&printer, parent);
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    page = printer.pageLayout();
    return true;
}

} // namespace Tarno
