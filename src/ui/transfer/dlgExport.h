#pragma once

#include "ui/common/Program.h"
#include "ui/reports/LogReport.h"

#include <QDialog>

#include <memory>

namespace Tarno
{

namespace Ui
{
class dlgExport;
}

/// Exports trips to a CSV file: all of them, or those that a query has found.
class dlgExport : public QDialog
{
    Q_OBJECT

public:
    /// Without a query in `found`, only all trips can be exported. What `program` refers to must outlive the
    /// dialog.
    dlgExport(const Program& program, TripsFound found, QWidget* parent);
    dlgExport(const dlgExport&) = delete;
    dlgExport& operator=(const dlgExport&) = delete;
    ~dlgExport() override;

private:
    void SetControls();
    void Export();

    const Program& m_program;
    TripsFound m_found;
    std::unique_ptr<Ui::dlgExport> m_ui;
};

} // namespace Tarno
