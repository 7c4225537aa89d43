#pragma once

#include "ui/common/Prompts.h"

namespace Tarno
{

class DesktopMessageBoxes final : public MessageBoxes
{
public:
    Button Ask(QWidget* parent, const Question& question) override;
};

class DesktopFileDialogs final : public FileDialogs
{
public:
    std::optional<QString> Open(QWidget* parent, const FileQuestion& question) override;
    std::optional<QString> Save(QWidget* parent, const FileQuestion& question) override;
    std::optional<QString> ChooseFolder(QWidget* parent, const QString& title,
                                        const QString& folder) override;
};

class DesktopProgramStarter final : public ProgramStarter
{
public:
    void Start(const QString& program, const QStringList& arguments) override;
    void EditText(const QString& path) override;
    void OpenFolder(const QString& path) override;
};

} // namespace Tarno
