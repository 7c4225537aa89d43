#pragma once

#include "RestoreLog.h"
#include "backup/Restore.h"
#include "ui/common/Program.h"

#include <QDialog>

#include <memory>

namespace Tarno
{

namespace Ui
{
class fRestore;
}

/// Shows what a back-up contains beside what is in the log, and restores it.
class fRestore : public QDialog
{
    Q_OBJECT

public:
    /// `backUp` was read from `path`. What the arguments refer to must outlive the window.
    fRestore(const Program& program, const QString& path, const BackUpArchive& backUp, QWidget* parent);
    fRestore(const fRestore&) = delete;
    fRestore& operator=(const fRestore&) = delete;
    ~fRestore() override;

    const RestoreOutcome& Outcome() const { return m_outcome; }

private:
    void ReadLog();
    void ShowContents();
    bool CanAdd() const;
    QString Note() const;
    void SetControls();
    bool ConfirmReplacing();
    void Replace();
    void ReloadLog(const RestoreResult& result);
    void Add();

    const Program& m_program;
    std::unique_ptr<Ui::fRestore> m_ui;
    QString m_path;
    const BackUpArchive& m_backUp;
    bool m_isReadable; ///< whether the present log can be read
    LogSummary m_present;
    std::size_t m_pictures = 0; ///< the number of pictures to which the present log refers
    ImportPlan m_missing;       ///< what the back-up has and the present log does not
    RestoreOutcome m_outcome;
};

/// Says why the back-up `path` cannot be restored.
void ShowUnusable(const Program& program, QWidget* parent, const QString& path, const Error& error);

} // namespace Tarno
