#include "Report.h"

#include "core/Error.h"
#include "core/Twips.h"

#include <QPageSize>

namespace Tarno
{

void ReportFields::Add(const QString& name)
{
    m_names.append(name);
    m_values.append(QString());
}

void ReportFields::SetValue(int position, const QString& value)
{
    if (position < 0 || position >= Count()) {
        throw Error(ErrorNumber::SubscriptOutOfRange);
    }
    m_values[position] = value;
}

std::optional<QString> ReportFields::Value(const QString& name) const
{
    for (int position = 0; position < Count(); ++position) {
        if (m_names[position].compare(name, Qt::CaseInsensitive) == 0) {
            return m_values[position];
        }
    }
    return std::nullopt;
}

Report::Report()
    : Page(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(1, 1, 1, 1), QPageLayout::Inch)
{
}

QSize Report::PaperSize() const
{
    // Qt stores the common paper sizes exactly in millimetres, but rounded in points and inches
    return (Page.fullRect(QPageLayout::Millimeter).size() * twipsPerMillimetre).toSize();
}

QMargins Report::PaperMargins() const
{
    return (Page.margins(QPageLayout::Millimeter) * twipsPerMillimetre).toMargins();
}

void Report::ReportStart() {}

void Report::DataInitialize() {}

void Report::Detail_Format() {}

void Report::Detail_BeforePrint() {}

void Report::ReportEnd() {}

void Report::ToolbarClick(const QString& /*caption*/, ReportViewer& /*viewer*/) {}

} // namespace Tarno
