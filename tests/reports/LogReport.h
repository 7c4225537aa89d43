#pragma once

#include "reports/arLogList.h"
#include "reports/engine/LayOut.h"
#include "reports/engine/ReportFonts.h"
#include "store/RecordLayouts.h"
#include "support/RaisedNumber.h"
#include "support/TestProgram.h"

#include <QPageSize>
#include <QStringList>
#include <QtTest/QTest>

#include <algorithm>
#include <string>
#include <vector>

namespace Tarno
{

/// A field definition as stored in field.xml.
struct Column {
    std::string name;
    std::string width = "20";
    std::string grow = "0";
    std::string font = "8";
    std::string label = "Heading";
};

using Columns = std::vector<Column>;

/// Returns columns "F0", "F1" ... with the given widths.
inline Columns ColumnsOfWidths(const std::vector<int>& widths)
{
    Columns columns;
    for (const int width : widths) {
        columns.push_back({.name = "F" + std::to_string(columns.size()), .width = std::to_string(width)});
    }
    return columns;
}

inline std::string FieldFile(const Columns& columns)
{
    std::string file = "<data>";
    int number = 0;
    for (const Column& column : columns) {
        file += "<field><FieldNo>" + std::to_string(++number) + "</FieldNo><FieldName>" + column.name +
                "</FieldName><Desc>x</Desc><Label>" + column.label + "</Label><Width>" + column.width +
                "</Width><Font>" + column.font + "</Font><Grow>" + column.grow +
                "</Grow><DefaultFlag>1</DefaultFlag></field>";
    }
    return file + "</data>";
}

/// A program whose field definitions are the columns of a log report, and the table of the report, at first
/// with one row of empty cells. The printer's page is A4 portrait with margins of 20 mm.
struct LogReport {
    explicit LogReport(const Columns& fields) : grid(1, ReportRow(fields.size()))
    {
        program.folder.Write("field.xml", FieldFile(fields));
        Load();
    }

    /// Uses all shipped fields and the sample log.
    LogReport()
    {
        program.UseSample();
        Load();
    }

    /// Keeps only the columns of the default report.
    void UseDefaultColumns()
    {
        columns.erase(std::remove_if(
                          columns.begin(), columns.end(),
                          [](const RecordView& field) { return field.Text(FieldField::DefaultFlag) == "0"; }),
                      columns.end());
    }

    /// Fills the table from the log.
    void FillGrid()
    {
        std::string names;
        std::string keys;
        for (const RecordView& column : columns) {
            names += (names.empty() ? "" : ",") + column.Text(FieldField::FieldName);
            keys += (keys.empty() ? "" : ",") + column.Text(FieldField::FieldNo);
        }
        if (program.sql.ReportLogData(names, keys, 0) != succeeded) {
            qFatal("no rows");
        }
        grid = program.sql.ReportGrid();
    }

    void UsePaper(QPageSize::PageSizeId size) { program.printers.defaultPage.setPageSize(QPageSize(size)); }

    Document Run() const
    {
        arLogList report(program.program.printers.DefaultPage(), columns, grid);
        return LayOut(report).value();
    }

    int Error() const
    {
        return RaisedNumber([this] { Run(); });
    }

    TestProgram program;
    RecordList columns;
    ReportTable grid;

private:
    void Load()
    {
        program.Start();
        if (program.sql.FieldList(columns) != succeeded) {
            qFatal("no field definitions");
        }
    }
};

/// Returns the text `name` of a band; aborts the test if it does not exist.
inline const PlacedText& FindText(const Band& band, const QString& name)
{
    const auto found = std::find_if(band.texts.begin(), band.texts.end(),
                                    [&](const PlacedText& text) { return text.name == name; });
    if (found == band.texts.end()) {
        qFatal("not printed: %s", qPrintable(name));
    }
    return *found;
}

inline const PlacedText& FindText(const Band& band, const char* name)
{
    return FindText(band, QLatin1String(name));
}

inline int RightEnd(const PlacedText& text)
{
    return text.box.left() + text.box.width();
}

/// Returns "left,line" for each column, in millimetres and counting lines from 0, or "misplaced" if the
/// heading is not above its field or not on a line.
inline QStringList ColumnPositions(const Document& document, std::size_t columns)
{
    QStringList places;
    for (std::size_t column = 0; column < columns; ++column) {
        const QRect heading = FindText(document.header, QStringLiteral("lblF%1").arg(column)).box;
        const QRect field = FindText(document.details.front(), QStringLiteral("fldF%1").arg(column)).box;
        const bool misplaced = heading.left() % 57 != 0 || heading.left() != field.left() ||
                               heading.top() != field.top() + 741 || field.top() % 399 != 0;
        places << (misplaced ? QStringLiteral("misplaced")
                             : QStringLiteral("%1,%2").arg(field.left() / 57).arg(field.top() / 399));
    }
    return places;
}

inline QString Joined(const QStringList& words)
{
    return words.join(QLatin1Char(' '));
}

inline QStringList LinesOf(const PlacedText& text)
{
    QStringList lines;
    for (const TextLine& line : text.lines) {
        lines << line.text;
    }
    return lines;
}

/// Returns whether every line of the text is inside its box.
inline bool IsWhole(const PlacedText& text)
{
    TextMeasurer measurer;
    return std::all_of(text.lines.begin(), text.lines.end(), [&](const TextLine& line) {
        return line.top >= text.box.top() &&
               line.top + text.lineHeight <= text.box.top() + text.box.height() &&
               measurer.For(text.font, line.text).metrics.horizontalAdvance(line.text) <= text.box.width();
    });
}

/// Adds test rows for A4 and Letter.
inline void AddPapers()
{
    QTest::addColumn<QPageSize::PageSizeId>("paper");
    QTest::addColumn<int>("printable"); // twips
    QTest::newRow("A4") << QPageSize::A4 << 16838 - 2 * 1134;
    QTest::newRow("Letter") << QPageSize::Letter << 15840 - 2 * 1134;
}

} // namespace Tarno
