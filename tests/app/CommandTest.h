#pragma once

#include "app/Commands.h"
#include "support/TestProgram.h"

#include <sstream>
#include <string>
#include <vector>

namespace Tarno
{

/// Runs commands on a log in a temporary folder.
struct CommandTest {
    /// Runs the command and keeps what it has printed.
    ExitStatus Run(const std::vector<std::string>& arguments)
    {
        out.str({});
        err.str({});
        const CommandLine line = ParseCommandLine(arguments);
        if (!line.problem.empty()) {
            QTest::qFail(line.problem.c_str(), __FILE__, __LINE__);
            return WrongUsage;
        }
        return RunCommand(line, {program.programFolder, program.operations, program.sql, program.clock,
                                 program.printers, in, out, err});
    }

    /// Adds two places and three trips.
    void UseSmallLog()
    {
        using namespace EntryField;
        program.Start();
        program.AddLocation("Pittwater, Barrenjoey");
        program.AddLocation("Lake~CL~East bank",
                            {{LocationField::LocLatt, ""}, {LocationField::LocLong, ""}});
        const auto add = [this](const char* date, const char* place, const char* action, const char* caught) {
            program.AddEntry({{StartDate, date},
                              {EndDate, date},
                              {StartTime, "06:00"},
                              {EndTime, "10:00"},
                              {LocNo, place},
                              {FishAction, action},
                              {FishCaught, caught}});
        };
        add("2003-02-05", "1", "2", "Bream 30 cm~CL~Squid\tx 3");
        add("2002-12-24", "2", "", "");
        add("2003-03-01", "1", "0", "Flathead");
    }

    std::string PathOf(const char* name) const { return program.folder.PathOf(name); }

    std::string Out() const { return out.str(); }

    std::string Err() const { return err.str(); }

    TestProgram program;
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream err;
};

} // namespace Tarno
