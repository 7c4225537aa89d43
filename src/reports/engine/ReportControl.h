#pragma once

#include <QImage>
#include <QString>

#include <deque>
#include <limits>

namespace Tarno
{

// The building blocks of a report. All lengths are in twips: 1440 per inch, 15 per device-independent pixel.

enum class TextAlignment { Left = 0, Right = 1, Center = 2 };
enum class VerticalTextAlignment { Top = 0, Middle = 1, Bottom = 2 };

struct ReportFont {
    QString Name;
    double Size = 8; ///< points
    bool Bold = false;

    bool operator==(const ReportFont&) const = default;
};

/// A page number or page count that replaces the text of a control when its page is known.
enum class PageText { None, Number, Count };

/// A label, a data-bound field, a line or a picture in a section.
struct ReportControl {
    enum class Kind { Label, Field, Line, Picture };

    Kind kind = Kind::Label;
    QString Name;
    int Left = 0; ///< relative to the section; for a line, its start
    int Top = 0;  ///< relative to the section
    int Width = 0;
    int Height = 0;
    bool Visible = true;

    // labels and fields
    QString Text; ///< a label's caption; a field's value, set from its data before Detail_Format
    ReportFont Font;
    TextAlignment Alignment = TextAlignment::Left;
    VerticalTextAlignment VerticalAlignment = VerticalTextAlignment::Top;
    PageText Page = PageText::None;
    /// Follows the text of the previous control at the distance of a space. The alignment of the first of
    /// such controls applies to all of them, within all their boxes.
    bool JoinsPrevious = false;

    // fields
    QString DataField;    ///< name of the report field that it shows, case-insensitive
    bool CanGrow = false; ///< grows to fit its text, if a letter fits, and moves the controls below it down
    double LargestGrowingFont =
        std::numeric_limits<double>::infinity(); ///< points; keeps its height above it
    bool MultiLine = false;                      ///< wraps its text and keeps its line breaks
    int PaddingRight = 0;                        ///< space at the right that wrapped text leaves free

    // lines
    int Weight = 15; ///< thickness

    // pictures, stretched to the control's size
    QImage Picture;
};

/// The controls of a section, in drawing order.
class ReportControls
{
public:
    /// Appends a control of the type "DDActiveReports.Label", "DDActiveReports.Field",
    /// "DDActiveReports.Line" or "DDActiveReports.Image" and returns it. The reference is valid until
    /// the report is laid out. Throws Error InvalidProcedureCall for any other type.
    ReportControl& Add(const QString& type);

    /// Returns the control `name`, case-insensitive. Throws Error SubscriptOutOfRange if it does not exist.
    ReportControl& operator[](const QString& name);

    auto begin() { return m_controls.begin(); }

    auto end() { return m_controls.end(); }

    auto begin() const { return m_controls.begin(); }

    auto end() const { return m_controls.end(); }

private:
    std::deque<ReportControl> m_controls; // a deque, so that Add keeps references valid
};

/// A band of the report.
struct ReportSection {
    int Height = 0;
    ReportControls Controls;
};

} // namespace Tarno
