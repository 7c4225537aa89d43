#pragma once

#include "reports/engine/LayOut.h"
#include "reports/engine/ReportFonts.h"

#include <QRect>
#include <QStringList>

#include <functional>
#include <map>
#include <utility>
#include <vector>

namespace Tarno
{

/// A report of rows that a test provides. It records its events and calls the test's function for each of
/// them. Its paper is A4 portrait with margins of one inch, and its bands are empty at first.
class RowsReport : public Report
{
public:
    explicit RowsReport(std::vector<QStringList> texts = {}) : rows(std::move(texts)) {}

    /// Adds a field for the next column of the rows, at `place` on the detail band.
    ReportControl& AddField(const QString& name, const QRect& place)
    {
        Fields.Add(name);
        ReportControl& field = Detail.Controls.Add(QStringLiteral("DDActiveReports.Field"));
        field.DataField = name;
        SetUp(field, name, place);
        return field;
    }

    /// Adds a field that wraps its text and grows with it.
    ReportControl& AddGrowingField(const QString& name, const QRect& place)
    {
        ReportControl& field = AddField(name, place);
        field.CanGrow = true;
        field.MultiLine = true;
        return field;
    }

    static ReportControl& AddLabel(ReportSection& section, const QString& name, const QRect& place,
                                   const QString& text)
    {
        ReportControl& label = section.Controls.Add(QStringLiteral("DDActiveReports.Label"));
        SetUp(label, name, place);
        label.Text = text;
        return label;
    }

    static ReportControl& AddLine(ReportSection& section, const QString& name, const QRect& place)
    {
        ReportControl& line = section.Controls.Add(QStringLiteral("DDActiveReports.Line"));
        SetUp(line, name, place);
        return line;
    }

    /// Returns `count` rows of one column: "row 0", "row 1" ...
    static std::vector<QStringList> Numbered(int count)
    {
        std::vector<QStringList> numbered;
        numbered.reserve(static_cast<std::size_t>(count));
        for (int row = 0; row < count; ++row) {
            numbered.push_back({QStringLiteral("row %1").arg(row)});
        }
        return numbered;
    }

    /// Returns the height of a line in the default font of the controls.
    static int LineHeight() { return TextMeasurer().For(DefaultFont()).lineHeight; }

    static ReportFont DefaultFont() { return {QStringLiteral("DejaVu Sans"), 8, false}; }

    void ReportStart() override
    {
        Tools = tools;
        RaiseEvent("ReportStart");
    }

    void DataInitialize() override
    {
        m_row = 0;
        RaiseEvent("DataInitialize");
    }

    void FetchData(bool& endOfData) override
    {
        endOfData = m_row >= rows.size();
        if (!endOfData) {
            const QStringList& row = rows[m_row++];
            for (int column = 0; column < row.size(); ++column) {
                Fields.SetValue(column, row[column]);
            }
        }
        RaiseEvent("FetchData");
    }

    void Detail_Format() override { RaiseEvent("Detail_Format"); }

    void Detail_BeforePrint() override { RaiseEvent("Detail_BeforePrint"); }

    void ReportEnd() override { RaiseEvent("ReportEnd"); }

    void ToolbarClick(const QString& caption, ReportViewer& /*viewer*/) override
    {
        clicked << caption;
        RaiseEvent("ToolbarClick");
    }

    std::vector<QStringList> rows;
    std::vector<ReportTool> tools;
    std::map<QString, std::function<void()>> handlers; ///< functions to call, by event name
    QStringList events;
    QStringList clicked;

private:
    static void SetUp(ReportControl& control, const QString& name, const QRect& place)
    {
        control.Name = name;
        control.Left = place.left();
        control.Top = place.top();
        control.Width = place.width();
        control.Height = place.height();
        control.Font = DefaultFont();
    }

    void RaiseEvent(const char* event)
    {
        events << QLatin1String(event);
        if (const auto found = handlers.find(QLatin1String(event)); found != handlers.end()) {
            found->second();
        }
    }

    std::size_t m_row = 0;
};

} // namespace Tarno
