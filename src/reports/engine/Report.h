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

/// The data of the current row, by name and position.
class ReportFields
{
public:
    /// Appends a field.
    void Add(const QString& name);

    int Count() const { return static_cast<int>(m_names.size()); }

    /// Throws Error SubscriptOutOfRange when there is no such position.
    void SetValue(int position, const QString& value);
    /// The value of the field of that name, whatever the case of its letters; nothing when there is none.
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

/// The window that shows a report, for the tools that the report adds to it.
class ReportViewer
{
public:
    ReportViewer() = default;
    ReportViewer(const ReportViewer&) = delete;
    ReportViewer& operator=(const ReportViewer&) = delete;
    virtual ~ReportViewer() = default;

    /// Both ask for a file and write the pages that are shown into it. They report errors themselves.
    virtual void ExportRtf() = 0;
    virtual void ExportPdf() = 0;
};

/// What is to be printed: a page header and footer, and a detail band that is printed once for each row of
/// data. A derived report fills it by answering the events, which come in this order: ReportStart,
/// DataInitialize, then for each row FetchData, Detail_Format, Detail_BeforePrint, and ReportEnd. Laying
/// out may happen several times; the design, that is sections and fields, is the same at each start, and what
/// ReportStart and DataInitialize add to it is for one run.
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
    /// The page that the printer prints on: size, orientation and margins. A4 with 1 inch margins at first.
    QPageLayout Page;

    /// The size of Page in twips, the way it is turned now.
    QSize PaperSize() const;
    /// Its margins in twips.
    QMargins PaperMargins() const;

    /// Orientation and tools are set here.
    virtual void ReportStart();
    virtual void DataInitialize();
    /// Sets the values of the next row in Fields, or `endOfData` when there is none.
    virtual void FetchData(bool& endOfData) = 0;
    /// The fields of Detail hold the row's values; their texts may be changed.
    virtual void Detail_Format();
    /// Detail has grown to what it needs: heights and tops are those that are printed, and may be changed.
    /// The texts are fixed now.
    virtual void Detail_BeforePrint();
    /// Comes even when one of the events after ReportStart has thrown. Must not throw.
    virtual void ReportEnd();

    /// The user clicked the tool with that caption in `viewer`.
    virtual void ToolbarClick(const QString& caption, ReportViewer& viewer);
};

} // namespace Tarno
