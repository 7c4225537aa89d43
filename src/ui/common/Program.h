#pragma once

#include "backup/Drafts.h"
#include "core/CRegSettings.h"
#include "core/Clock.h"
#include "core/FileOperations.h"
#include "core/ProgramFolder.h"
#include "store/cDescs.h"
#include "store/cSQL.h"
#include "ui/common/Prompts.h"
#include "ui/common/RememberedWindows.h"

namespace Tarno
{

/// The objects that live for the whole run and the interfaces to the desktop, passed to every window. The
/// creator of the struct owns what it refers to.
struct Program {
    const ProgramFolder& folder;
    cSQL& sql;
    const cDescs& descs;
    CRegSettings& settings;
    const Clock& clock;
    MessageBoxes& messages;
    FileDialogs& files;
    ProgramStarter& programs;
    Printers& printers;
    FileOperations& operations;
    const RememberedWindows& windows;
    Drafts& drafts;
};

} // namespace Tarno
