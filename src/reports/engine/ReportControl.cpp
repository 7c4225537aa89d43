#include "ReportControl.h"

#include "core/Error.h"

#include <algorithm>
#include <array>
#include <utility>

namespace Tarno
{

ReportControl& ReportControls::Add(const QString& type)
{
    using Kind = ReportControl::Kind;
    static constexpr std::array kinds{
        std::pair("DDActiveReports.Label", Kind::Label), std::pair("DDActiveReports.Field", Kind::Field),
        std::pair("DDActiveReports.Line", Kind::Line), std::pair("DDActiveReports.Image", Kind::Picture)};
    const auto* found = std::find_if(kinds.begin(), kinds.end(),
                                     [&](const auto& kind) { return type == QLatin1String(kind.first); });
    if (found == kinds.end()) {
        throw Error(ErrorNumber::InvalidProcedureCall);
    }
    m_controls.emplace_back().kind = found->second;
    return m_controls.back();
}

ReportControl& ReportControls::operator[](const QString& name)
{
    const auto found = std::find_if(m_controls.begin(), m_controls.end(), [&](const ReportControl& control) {
        return control.Name.compare(name, Qt::CaseInsensitive) == 0;
    });
    if (found == m_controls.end()) {
        throw Error(ErrorNumber::SubscriptOutOfRange);
    }
    return *found;
}

} // namespace Tarno
