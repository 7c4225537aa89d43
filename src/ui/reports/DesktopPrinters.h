#pragma once

#include "ui/common/Prompts.h"

namespace Tarno
{

/// The system's printers and dialogs.
class DesktopPrinters final : public Printers
{
public:
    QPageLayout DefaultPage() override;
    bool Print(QWidget* parent, const PrintJob& job) override;
    bool SetUpPage(QWidget* parent, QPageLayout& page) override;
};

} // namespace Tarno
