#pragma once

#include "exchange/TripTable.h"
#include "ui/common/Program.h"

#include <QDialog>

#include <memory>
#include <string>
#include <vector>

namespace Tarno
{

namespace Ui
{
class fImport;
}

/// Shows what the rows of a table will become in the log, and imports them when the user wants it.
class fImport : public QDialog
{
    Q_OBJECT

public:
    /// `path` is where `file` was read from. Call Plan before the window is shown. What `program` refers to
    /// must outlive the window.
    fImport(const Program& program, CsvFile file, const QString& path, QWidget* parent);
    fImport(const fImport&) = delete;
    fImport& operator=(const fImport&) = delete;
    ~fImport() override;

    /// Finds out what the rows become, and shows it. Returns false if the user cancels that.
    bool Plan();

    /// Returns the keys of the imported trips.
    const std::vector<std::string>& SavedKeys() const { return m_savedKeys; }

private:
    void FillBoxes();
    void Connect();
    void PlanOrClose();
    TableForms Forms() const;
    void ShowColumns();
    void ShowColumn();
    void ChooseField();
    std::size_t ShownRow() const;
    void ShowRows();
    void ShowSummary();
    bool ConfirmPlaces();
    void Import();

    const Program& m_program;
    std::unique_ptr<Ui::fImport> m_ui;
    CsvFile m_file;
    ColumnMapping m_mapping;
    std::vector<TripCandidate> m_candidates;
    ImportPlan m_plan;
    std::vector<std::string> m_savedKeys;
};

} // namespace Tarno
