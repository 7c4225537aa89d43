#pragma once

#include "ui/common/Program.h"
#include "ui/common/TextTableModel.h"

#include <QDialog>

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

namespace Tarno
{

namespace Ui
{
class fWayPoints;
}

/// Lets the user choose from a list which locations to export or import.
class fWayPoints : public QDialog
{
    Q_OBJECT

public:
    struct Contents {
        QString title;
        QString note; ///< above the list
        QStringList headings;
        QStringList samples; ///< see SortableList::FitColumns; the first column is stretched
        std::vector<TextTableModel::Row> rows;
        QString hint; ///< shown if there are no rows
        QString verb; ///< with a mnemonic, for the button: "&Export"
    };

    /// Exports or imports the chosen rows. Returns true if the window is to be closed.
    using Transfer = std::function<bool(QWidget* window, const std::vector<std::size_t>& chosen)>;

    /// What `program` refers to must outlive the window.
    fWayPoints(const Program& program, Contents contents, const Transfer& transfer, QWidget* parent);
    fWayPoints(const fWayPoints&) = delete;
    fWayPoints& operator=(const fWayPoints&) = delete;
    ~fWayPoints() override;

private:
    void Connect(const Transfer& transfer);
    void SetControls();

    std::unique_ptr<Ui::fWayPoints> m_ui;
    QString m_verb;
};

} // namespace Tarno
