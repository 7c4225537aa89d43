#pragma once

#include "reports/engine/LayOut.h"
#include "ui/common/Program.h"

#include <QDialog>

#include <memory>
#include <optional>

class QAction;
class QComboBox;
class QSpinBox;
class QToolBar;

namespace Tarno
{

class ExportedFile;
class PreviewView;

/// The preview window, from which a report is printed or exported.
class fPreview : public QDialog, private ReportViewer
{
    Q_OBJECT

public:
    /// `report` and the members of `program` must outlive the window.
    fPreview(const Program& program, Report& report, QWidget* parent);
    fPreview(const fPreview&) = delete;
    fPreview& operator=(const fPreview&) = delete;
    ~fPreview() override;

    /// Lays the report out and shows it until the window is closed. Returns at once if the user cancels the
    /// layout. Propagates exceptions from the report's events.
    void ShowReport();

    /// Returns the document that is shown.
    const Document& Pages() const { return *m_document; }

private:
    void ExportRtf() override;
    void ExportPdf() override;
    bool Prepare();
    void MakeToolBar();
    void AddReportTools();
    void AddNavigation();
    void AddZoom();
    QAction* AddAction(const char* name, const QString& caption, const QKeySequence& key,
                       void (fPreview::*run)());
    void Describe(QAction* action, const QString& words);
    void ShowExported(const std::optional<QString>& file);
    void ShowPage();
    void ShowZoom();
    void ChooseZoom();

    void Print();
    void SetUpPage();
    void FirstPage();
    void PreviousPage();
    void NextPage();
    void LastPage();
    void ZoomIn();
    void ZoomOut();
    void OnePage();
    void TwoPages();

    const Program& m_program;
    Report& m_report;
    std::unique_ptr<Document> m_document;
    QToolBar* m_toolBar;
    PreviewView* m_view;
    ExportedFile* m_exported;
    QSpinBox* m_page = nullptr;
    QComboBox* m_zoom = nullptr;
};

} // namespace Tarno
