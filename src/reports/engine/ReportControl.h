#pragma once

#include <QImage>
#include <QString>

#include <deque>

namespace Tarno
{

// What a report is made of. All lengths are twips: 1440 to the inch, 15 to a device-independent pixel.

enum class TextAlignment { Left = 0, Right = 1, Center = 2 };
enum class VerticalTextAlignment { Top = 0, Middle = 1, Bottom = 2 };

struct ReportFont {
    QString Name;
    double Size = 8; ///< points
    bool Bold = false;

    bool operator==(const ReportFont&) const = default;
};

/// What a text shows besides its own words: filled in when the page is known.
enum class PageText { None, Number, Count };

/// A label, a field bound to data, a rule or a picture on a section.
struct ReportControl {
    enum class Kind { Label, Field, Line, Picture };

    Kind kind = Kind::Label;
    QString Name;
    int Left = 0; ///< from the section's left edge; of a line, where it starts
    int Top = 0;  ///< from the section's top edge
    int Width = 0;
    int Height = 0;
    bool Visible = true;

    // labels and fields
    QString Text; ///< a label's caption; a field's value, set from its data before Detail_Format
    ReportFont Font;
    TextAlignment Alignment = TextAlignment::Left;
    VerticalTextAlignment VerticalAlignment = VerticalTextAlignment::Top;
    PageText Page = PageText::None;

    // fields
    QString DataField;      ///< the report field that it shows, found whatever the case of its letters
    bool CanGrow = false;   ///< becomes as high as its text needs, and moves what stands below it down
    bool MultiLine = false; ///< wraps its text and keeps its line breaks
    int PaddingRight = 0;   ///< width at the right that a wrapped text leaves free

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
    /// "DDActiveReports.Line" or "DDActiveReports.Image" and returns it; the reference holds until
    /// the report is laid out. Throws Error InvalidProcedureCall for any other type.
    ReportControl& Add(const QString& type);

    /// The control of that name, whatever the case of its letters. Throws Error SubscriptOutOfRange.
    ReportControl& operator[](const QString& name);

    auto begin() { return m_controls.begin(); }

    auto end() { return m_controls.end(); }

    auto begin() const { return m_controls.begin(); }

    auto end() const { return m_controls.end(); }

private:
    std::deque<ReportControl> m_controls; // so that references to earlier ones hold
};

/// A band of the report.
struct ReportSection {
    int Height = 0;
    ReportControls Controls;
};

} // namespace Tarno
