#include "PdfWriter.h"

#include "PaintPage.h"
#include "core/Twips.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>

namespace Tarno
{

QByteArray PdfBytes(const Document& document, const ExportProgress& progress)
{
    // written to memory first, because QPdfWriter does not report write errors
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(twipsPerInch);
    writer.setPageLayout(PageOf(document));
    writer.setTitle(document.title);
    writer.setCreator(QStringLiteral("Tarno"));
    QPainter painter(&writer);
    PagePainter pages(painter, document);
    for (std::size_t page = 0; page < document.pages.size(); ++page) {
        if (page > 0) {
            writer.newPage();
        }
        pages.Paint(page);
        if (progress && !progress(static_cast<int>(page + 1))) {
            painter.end();
            return {};
        }
    }
    painter.end();
    return bytes;
}

} // namespace Tarno
