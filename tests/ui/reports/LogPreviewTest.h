#pragma once

#include "reports/ReadRtf.h"
#include "store/EntryFields.h"
#include "ui/reports/BuilderTest.h"

#include <QAction>
#include <QStringList>
#include <QToolBar>

#include <string>
#include <utility>
#include <vector>

namespace Tarno
{

// Helpers for tests of the report builder's "Preview". They read the report back from an RTF export.

/// A report as shown in its preview. The cells of a row are separated by "|".
struct Shown {
    std::string headings;
    std::vector<std::string> rows;
    QString windowTitle;
    RtfReading all;
};

using Rows = std::vector<std::string>;

inline std::string Joined(const QStringList& cells, int count)
{
    return ToUtf8(cells.mid(0, count).join(QLatin1Char('|')));
}

/// Exports the report of the open preview and reads it.
inline RtfReading Exported(TestProgram& program, QWidget& preview)
{
    program.files.ExpectSave({.title = QStringLiteral("Save Report to RTF"),
                              .filter = QStringLiteral("Rich Text Format (*.rtf)"),
                              .folder = FromUtf8(program.folder.Path() + '/'),
                              .fileName = QStringLiteral("RTF Files"),
                              .suffix = QStringLiteral(".rtf")},
                             FromUtf8(program.folder.PathOf("shown.pdf")));
    Click(*Find<QToolBar>(preview, "tlbPreview").widgetForAction(&Find<QAction>(preview, "&RTF Export")));
    return RtfReader::Read(QByteArray::fromStdString(program.folder.Read("shown.pdf")));
}

/// Reads the report in the open preview. The columns must fit on one line.
inline Shown ReadPreview(TestProgram& program, QWidget& preview, int columns)
{
    Shown shown;
    shown.windowTitle = preview.windowTitle();
    shown.all = Exported(program, preview);
    if (!shown.all.header.isEmpty()) {
        shown.headings = Joined(shown.all.header.last().cells, columns);
    }
    for (const RtfRow& row : shown.all.body) {
        shown.rows.push_back(Joined(row.cells, columns));
    }
    return shown;
}

/// Calls `open`, which opens the preview of the builder's report, reads the preview and closes it.
template <typename Open>
Shown PreviewBy(TestProgram& program, QWidget& builder, Open&& open)
{
    Shown shown;
    const int columns = List(builder, "lstRpt").count();
    WhileOpen("fPreview", std::forward<Open>(open), [&](QDialog& preview) {
        QCOMPARE(preview.parentWidget(), &builder);
        shown = ReadPreview(program, preview, columns);
        preview.close();
    });
    return shown;
}

inline Shown Preview(TestProgram& program, QWidget& builder)
{
    return PreviewBy(program, builder, [&] { Click(builder, "cmdPreview"); });
}

/// Clicks "Preview" and checks that it shows and writes nothing and leaves the builder unchanged.
inline void PreviewNothing(TestProgram& program, QWidget& builder)
{
    const std::vector<std::string> steps = program.operations.Steps();
    const std::string lists = Numbers(builder, "lstAvail") + " -> " + Numbers(builder, "lstRpt");
    WithoutWindow([&] { Click(builder, "cmdPreview"); });
    QCOMPARE(program.operations.Steps(), steps);
    QCOMPARE(Numbers(builder, "lstAvail") + " -> " + Numbers(builder, "lstRpt"), lists);
    QVERIFY(builder.isVisible());
    QVERIFY(IsEnabled(builder, "cmdPreview"));
    QVERIFY(IsEnabled(builder, "lstRpt"));
    QVERIFY(IsEnabled(builder, "cmdClose"));
}

/// Like PreviewNothing, but expects an error report.
inline void PreviewFails(TestProgram& program, QWidget& builder, const char* module, const char* routine,
                         ErrorNumber number)
{
    program.reports.Expect(module, routine, number);
    PreviewNothing(program, builder);
}

inline void PreviewFails(TestProgram& program, QWidget& builder, ErrorNumber number)
{
    PreviewFails(program, builder, "fRptLog", "CreateReport", number);
}

inline Values Trip(const std::string& date, const std::string& time, const std::string& location,
                   const std::string& tide)
{
    return {{EntryField::StartDate, date},
            {EntryField::StartTime, time},
            {EntryField::LocNo, location},
            {EntryField::TideStart, tide}};
}

/// A log of four trips to two locations.
class ProgramWithTrips : public ProgramWithSixFields
{
public:
    explicit ProgramWithTrips(const std::vector<Line>& reports = {}) : ProgramWithSixFields(reports)
    {
        AddLocation("Zeehan");
        AddLocation("Albany");
        AddEntry(Trip("2003-03-01", "06:00", "1", "3"));
        AddEntry(Trip("2003-01-01", "10:00", "2", "0"));
        AddEntry(Trip("2003-04-01", "09:00", "2", "2"));
        AddEntry(Trip("2003-02-01", "07:00", "1", "1"));
    }
};

/// Puts the fields with the given numbers on the report, in that order.
inline void Show(QWidget& builder, const std::vector<int>& numbers)
{
    Click(builder, "cmdBackAll");
    for (const int number : numbers) {
        int row = 0;
        while (List(builder, "lstAvail").item(row)->data(Qt::UserRole).toInt() != number) {
            ++row;
        }
        DoubleClickItem(builder, "lstAvail", row);
    }
}

inline void ChooseSaved(QWidget& builder, int row, bool tick = true)
{
    if (tick) {
        Click(builder, "chkSaved");
    }
    Choose(builder, "cboSaved", row);
}

} // namespace Tarno
