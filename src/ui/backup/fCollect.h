#pragma once

#include "backup/CollectPictures.h"
#include "ui/common/Program.h"

#include <QDialog>

#include <memory>

namespace Tarno
{

namespace Ui
{
class fCollect;
}

/// Shows which pictures are outside the folder of the log, and copies them there.
class fCollect : public QDialog
{
    Q_OBJECT

public:
    /// Reads the pictures. What `program` refers to must outlive the window.
    fCollect(const Program& program, QWidget* parent);
    fCollect(const fCollect&) = delete;
    fCollect& operator=(const fCollect&) = delete;
    ~fCollect() override;

private:
    void ReadPictures();
    void ShowPictures();
    void Collect();

    const Program& m_program;
    std::unique_ptr<Ui::fCollect> m_ui;
    CollectPlan m_plan;
};

} // namespace Tarno
