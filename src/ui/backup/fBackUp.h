#pragma once

#include "backup/BackUp.h"
#include "ui/common/Program.h"

#include <QDialog>

#include <memory>

namespace Tarno
{

namespace Ui
{
class fBackUp;
}

/// Shows the back-ups of the log and makes new ones.
class fBackUp : public QDialog
{
    Q_OBJECT

public:
    /// What `program` refers to must outlive the window.
    fBackUp(const Program& program, QWidget* parent);
    fBackUp(const fBackUp&) = delete;
    fBackUp& operator=(const fBackUp&) = delete;
    ~fBackUp() override;

private:
    QString Folder() const;
    void ShowBackUps();
    void ChooseFolder();
    void MakeBackUp();
    void ShowResult(const QString& path, const BackUpResult& result);

    const Program& m_program;
    std::unique_ptr<Ui::fBackUp> m_ui;
    QString m_log; ///< the folder of the log
};

} // namespace Tarno
