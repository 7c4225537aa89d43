#pragma once

#include "ui/common/Program.h"

#include <string>
#include <vector>

class QWidget;

namespace Tarno
{

/// What a restore has done to the log.
struct RestoreOutcome {
    enum class Kind {
        Nothing,
        Replaced,   ///< the data access has loaded the restored log
        Added,      ///< trips and locations were added
        Interrupted ///< the log is replaced in part; the program must end without saving, see FinishRestore
    };

    Kind kind = Kind::Nothing;
    std::vector<std::string> added = {}; ///< the keys of the trips that were added
};

/// Asks for a back-up and lets the user restore it. Says why one cannot be restored.
RestoreOutcome RestoreLog(const Program& program, QWidget* parent);

} // namespace Tarno
