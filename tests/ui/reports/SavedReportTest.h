#pragma once

#include "ui/reports/BuilderTest.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Tarno
{

// Helpers for tests of the saved reports in the report builder.

/// Three saved reports over the six fields.
inline const std::vector<Line> threeReports{
    {"1", "Tides", "TideStart,StartDate", "6,1"},
    {"2", "Ends", "EndTime,EndDate,LocNo", "4,2,5"},
    {"3", "All", "StartDate,EndDate,StartTime,EndTime,LocNo,TideStart", "1,2,3,4,5,6"}};

/// FieldNumbers of the default report.
inline const char* const defaultLists = "2,4,6 -> 1,3,5";

/// Returns the field numbers in both lists of the builder, with " -> " between the lists.
inline std::string FieldNumbers(const QWidget& builder)
{
    return Numbers(builder, "lstAvail") + " -> " + Numbers(builder, "lstRpt");
}

/// Returns number, name, data names and field numbers of a stored report, separated by "/".
inline std::string StoredReport(const TestProgram& program, std::size_t position)
{
    const auto reports = program.Stored("Rpt.xml");
    if (position >= reports.size()) {
        return "(not found)";
    }
    const Line& report = reports[position];
    return report.at(0) + "/" + report.at(1) + "/" + report.at(2) + "/" + report.at(3);
}

inline bool IsFrameOpen(const QWidget& builder)
{
    return Find<QWidget>(builder, "frSaved").isVisible();
}

/// Moves the first field of the report down, so that "Save" is enabled.
inline void ChangeSomething(QWidget& builder)
{
    ClickItem(builder, "lstRpt", 0);
    Click(builder, "cmdDn");
}

/// Opens the frame for saving.
inline void OpenFrame(QWidget& builder)
{
    if (!IsEnabled(builder, "cmdSave")) {
        ChangeSomething(builder);
    }
    Click(builder, "cmdSave");
}

/// Saves the current report as a new one.
inline void SaveNew(QWidget& builder, const std::string& name)
{
    OpenFrame(builder);
    if (!IsTicked(builder, "chkNew")) {
        Click(builder, "chkNew");
    }
    Retype(builder, "txtSaved", name);
    Click(builder, "cmdSavedOK");
}

inline void Tick(const QWidget& builder)
{
    Click(builder, "chkSaved");
}

} // namespace Tarno
