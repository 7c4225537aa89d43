#pragma once

#include "core/CRegSettings.h"
#include "core/Clock.h"
#include "core/FileOperations.h"
#include "core/ProgramFolder.h"
#include "store/cDescs.h"
#include "store/cSQL.h"
#include "ui/common/Prompts.h"

namespace Tarno
{

/// What every window is given: the objects that live for the whole run, and the outside world. Whoever
/// makes it owns what it refers to.
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
};

} // namespace Tarno
