#pragma once

#include "core/ProgramFolder.h"
#include "store/cSQL.h"
#include "support/ExpectedReports.h"
#include "support/ScriptedFileOperations.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <string_view>

namespace Tarno
{

/// The data access with a temporary folder that contains copies of the seven shipped data files. Change files
/// before Init. An unexpected report fails the test.
struct TestStore {
    TestStore()
    {
        for (const char* name : {"tarno.xml", "field.xml", "location.xml", "tarnoblank.xml",
                                 "locationblank.xml", "Rpt.xml", "RptBlank.xml"}) {
            std::filesystem::copy_file(std::filesystem::path(TARNO_SHIPPED_DATA) / name, folder.PathOf(name));
        }
    }

    TemporaryFolder folder;
    ProgramFolder programFolder{folder.Path()};
    ScriptedFileOperations operations;
    ExpectedReports reports;
    cSQL sql{programFolder, operations};
};

} // namespace Tarno
