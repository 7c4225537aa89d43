#pragma once

#include "ui/common/Prompts.h"

#include <QFrame>

class QLineEdit;

namespace Tarno
{

/// A status line that shows where an exported file is and opens its folder. Hidden until the first export.
class ExportedFile : public QFrame
{
    Q_OBJECT

public:
    /// `programs` must outlive the status line.
    ExportedFile(ProgramStarter& programs, QWidget* parent);

    void ShowFile(const QString& path);

private:
    ProgramStarter& m_programs;
    QLineEdit* m_path;
};

} // namespace Tarno
