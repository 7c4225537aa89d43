#pragma once

#include "reports/engine/ReportControl.h"

#include <QMargins>
#include <QPageLayout>
#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace Tarno
{

/// The values of the current row, accessible by name and by position.
class ReportFields
{
public:
    /// Appends a field.
    void Add(const QString& name);

    int Count() const { return static_cast<int>(m_names.size()); }

    /// Throws Error SubscriptOutOfRange if the position does not exist.
    void SetValue(int position, const QString& value);
    /// Returns the value of the field `name`, or nothing if it does not exist. Names are case-insensitive.
    std::optional<QString> Value(const QString& name) const;

private:
    QStringList m_names;
    QStringList m_values;
};

/// A tool that a report adds to the toolbar of its preview.
struct ReportTool {
    QString Caption;  ///< with "&" before the mnemonic
    int Position = 0; ///< from 0
};

/// The window that shows a report, as seen by the tools that the report adds to it.
class ReportViewer
{
public:
    ReportViewer() = default;
    ReportViewer(const ReportViewer&) = delete;
    ReportViewer& operator=(const ReportViewer&) = delete;
    virtual ~ReportViewer() = default;

    /// Both ask for a file name and export the pages that are shown. They report errors themselves.
    virtual void ExportRtf() = 0;
    virtual void ExportPdf() = 0;
};

/// A banded report: a page header, a page footer, and a detail band that is printed once for each row of
/// data. A derived report handles the events, which are raised in this order: ReportStart, DataInitialize,
/// then FetchData, Detail_Format and Detail_BeforePrint for each row, and finally ReportEnd. A report can run
/// several times. Each run starts with the same design (sections and fields); changes that ReportStart and
/// DataInitialize make to it last for one run.
class Report
{
public:
    Report();
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;
    virtual ~Report() = default;

    QString Caption;
    ReportSection PageHeader;
    ReportSection Detail;
    ReportSection PageFooter;
    ReportFields Fields;
    std::vector<ReportTool> Tools;
    /// The page to print on: size, orientation and margins. The default is A4 with margins of 1 inch.
    QPageLayout Page;

    /// Returns the size of Page in twips, in its current orientation.
    QSize PaperSize() const;
    /// Returns the margins of Page in twips.
    QMargins PaperMargins() const;

    /// Sets orientation and tools.
    virtual void ReportStart();
    /// Adds the fields.
    virtual void DataInitialize();
    /// Stores the values of the next row in Fields, or sets `endOfData` after the last row.
    virtual void FetchData(bool& endOfData) = 0;
    /// Called when the fields of Detail have the row's values; may change the texts and sizes of the
    /// controls.
    virtual void Detail_Format();
    /// Called when the controls of Detail have their final sizes; may change tops and heights, but not texts.
    virtual void Detail_BeforePrint();
    /// Called even if an event after ReportStart has thrown. Must not throw.
    virtual void ReportEnd();

    /// Called when the user clicks the tool with the given caption in `viewer`.
    virtual void ToolbarClick(const QString& caption, ReportViewer& viewer);
};

} // namespace Tarno
