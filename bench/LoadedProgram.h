#pragma once

#include "LogFolder.h"
#include "core/SettingsStore.h"
#include "qt/Strings.h"
#include "ui/common/DesktopPrompts.h"
#include "ui/common/Program.h"
#include "ui/common/SystemClock.h"
#include "ui/reports/DesktopPrinters.h"

#include <memory>

namespace Tarno
{

/// The program without windows, with a loaded log of generated trips.
class LoadedProgram
{
public:
    explicit LoadedProgram(int entries) : m_log(entries), m_folder(m_log.Path()) { sql.Init(); }

private:
    LogFolder m_log;
    ProgramFolder m_folder;
    std::unique_ptr<FileOperations> m_operations = SystemFileOperations();
    cDescs m_descs;
    std::unique_ptr<SettingsStore> m_store = SystemSettingsStore(*m_operations);
    CRegSettings m_settings{*m_store};
    SystemClock m_clock;
    DesktopMessageBoxes m_messages;
    DesktopFileDialogs m_files;
    DesktopProgramStarter m_programs;
    DesktopPrinters m_printers;
    RememberedWindows m_windows{FromUtf8(m_log.Path() + "/windows.ini")};
    Drafts m_drafts{m_log.Path() + "/drafts", *m_operations};

public:
    cSQL sql{m_folder, *m_operations};
    const Program program{m_folder, sql,        m_descs,    m_settings,    m_clock,   m_messages,
                          m_files,  m_programs, m_printers, *m_operations, m_windows, m_drafts};
};

} // namespace Tarno
