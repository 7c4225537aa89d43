#include "LayOut.h"

#include "Paging.h"
#include "ReportFonts.h"
#include "core/Twips.h"

#include <QScopeGuard>

#include <algorithm>
#include <utility>

namespace Tarno
{

namespace
{

/// Restores the report's design, which a run modifies, on destruction.
class DesignRestorer
{
public:
    explicit DesignRestorer(Report& report)
        : m_report(report),
          m_header(report.PageHeader),
          m_detail(report.Detail),
          m_footer(report.PageFooter),
          m_fields(report.Fields)
    {
    }

    DesignRestorer(const DesignRestorer&) = delete;
    DesignRestorer& operator=(const DesignRestorer&) = delete;

    ~DesignRestorer()
    {
        m_report.PageHeader = std::move(m_header);
        m_report.Detail = std::move(m_detail);
        m_report.PageFooter = std::move(m_footer);
        m_report.Fields = std::move(m_fields);
    }

private:
    Report& m_report;
    ReportSection m_header;
    ReportSection m_detail;
    ReportSection m_footer;
    ReportFields m_fields;
};

bool HasText(const ReportControl& control)
{
    return control.kind == ReportControl::Kind::Label || control.kind == ReportControl::Kind::Field;
}

void BindFields(ReportSection& section, const ReportFields& fields)
{
    for (ReportControl& control : section.Controls) {
        if (control.kind == ReportControl::Kind::Field && !control.DataField.isEmpty()) {
            control.Text = fields.Value(control.DataField).value_or(QString());
        }
    }
}

/// Replaces line breaks of every kind by "\n", or by a space in a control with a single line.
void NormalizeLineBreaks(ReportSection& section)
{
    for (ReportControl& control : section.Controls) {
        control.Text.replace(QLatin1String("\r\n"), QLatin1String("\n"))
            .replace(QLatin1Char('\r'), QLatin1Char('\n'));
        if (!control.MultiLine) {
            control.Text.replace(QLatin1Char('\n'), QLatin1Char(' '));
        }
    }
}

/// Keeps huge fonts from filling any number of pages, and from showing nothing but the space around a letter.
void LimitFonts(ReportSection& section, TextMeasurer& measurer)
{
    constexpr int largestForBox = 4; // times the height of the box
    for (ReportControl& control : section.Controls) {
        const int room = control.Width - control.PaddingRight;
        if (control.CanGrow && (control.Font.Size > control.LargestGrowingFont ||
                                measurer.For(control.Font).letterWidth > room)) {
            control.CanGrow = control.MultiLine = false;
        }
        if (!control.CanGrow && control.Height > 0) {
            control.Font.Size =
                std::min(control.Font.Size, double(largestForBox * control.Height) / twipsPerPoint);
        }
    }
}

/// The lines of each control's text, indexed like the controls of the section.
using SectionLines = std::vector<QStringList>;

SectionLines Measure(ReportSection& section, TextMeasurer& measurer)
{
    LimitFonts(section, measurer);
    NormalizeLineBreaks(section);
    SectionLines lines;
    for (const ReportControl& control : section.Controls) {
        lines.push_back(HasText(control) && control.Visible
                            ? measurer.Lines(control.Text, control.Font, control.Width - control.PaddingRight,
                                             control.MultiLine)
                            : QStringList());
    }
    return lines;
}

/// Returns how much higher `control` must become to fit `lines` lines. Vertically centred text keeps the
/// space that the design leaves around it, so its first line stays level with texts that do not grow.
int GrowthFor(const ReportControl& control, int lines, int lineHeight)
{
    const int needed = lines * lineHeight;
    if (!control.CanGrow || needed <= control.Height) {
        return 0;
    }
    const bool hasRoom =
        control.VerticalAlignment == VerticalTextAlignment::Middle && control.Height >= lineHeight;
    return needed + (hasRoom ? control.Height % lineHeight : 0) - control.Height;
}

/// Enlarges the fields that can grow, moves the controls below them down and enlarges the section.
void Grow(ReportSection& section, const SectionLines& lines, TextMeasurer& measurer)
{
    struct Place {
        ReportControl* control;
        int growth;
        int designTop;
        int designBottom;
    };

    std::vector<Place> places;
    int designEnd = 0;
    for (ReportControl& control : section.Controls) {
        const int growth = GrowthFor(control, static_cast<int>(lines[places.size()].size()),
                                     measurer.For(control.Font).lineHeight);
        places.push_back({&control, growth, control.Top, control.Top + control.Height});
        designEnd = std::max(designEnd, places.back().designBottom);
    }
    std::stable_sort(places.begin(), places.end(),
                     [](const Place& left, const Place& right) { return left.designTop < right.designTop; });
    int end = 0;
    for (Place& place : places) {
        int top = place.designTop;
        for (const Place& above : places) {
            if (above.designBottom <= place.designTop && &above < &place) {
                const int bottom = above.control->Top + above.control->Height;
                top = std::max(top, bottom + place.designTop - above.designBottom);
            }
        }
        place.control->Top = top;
        place.control->Height += place.growth;
        end = std::max(end, top + place.control->Height);
    }
    section.Height += end - designEnd;
}

PlacedText PlaceText(const ReportControl& control, const QStringList& lines, TextMeasurer& measurer)
{
    PlacedText text;
    text.name = control.Name;
    text.box = QRect(control.Left, control.Top, control.Width, control.Height);
    text.font = control.Font;
    text.alignment = control.Alignment;
    text.page = control.Page;
    text.joinsPrevious = control.JoinsPrevious;
    text.grows = control.CanGrow;
    text.paddingRight = control.PaddingRight;
    text.text = control.Text;
    text.lineHeight = measurer.For(control.Font).lineHeight;
    // a single line may be higher than the box
    const int shown = std::clamp(control.Height / text.lineHeight, 1, static_cast<int>(lines.size()));
    const int room = control.Height - shown * text.lineHeight;
    int top = control.Top;
    if (control.VerticalAlignment != VerticalTextAlignment::Top) {
        top += control.VerticalAlignment == VerticalTextAlignment::Middle ? room / 2 : room;
    }
    for (const QString& line : lines.mid(0, shown)) { // a box that cannot grow cuts its text off
        text.lines.push_back({line, top});
        top += text.lineHeight;
    }
    return text;
}

Band PlaceBand(const ReportSection& section, const SectionLines& lines, TextMeasurer& measurer)
{
    Band band;
    band.height = section.Height;
    std::size_t index = 0;
    for (const ReportControl& control : section.Controls) {
        const QStringList& text = lines[index++];
        if (!control.Visible) {
            continue;
        }
        if (HasText(control)) {
            band.texts.push_back(PlaceText(control, text, measurer));
        } else if (control.kind == ReportControl::Kind::Line) {
            const QPoint from(control.Left, control.Top);
            band.lines.push_back({from, from + QPoint(control.Width, control.Height), control.Weight});
        } else {
            band.pictures.push_back(
                {QRect(control.Left, control.Top, control.Width, control.Height), control.Picture});
        }
    }
    return band;
}

} // namespace

std::optional<Document> LayOut(Report& report, const LayOutProgress& progress)
{
    const DesignRestorer design(report);
    report.Tools.clear();
    report.ReportStart();
    const auto end = qScopeGuard([&report] { report.ReportEnd(); });
    report.DataInitialize();
    const ReportSection detailDesign = report.Detail;

    TextMeasurer measurer;
    Document document;
    document.title = report.Caption;
    document.paper = report.PaperSize();
    document.margins = report.PaperMargins();
    document.header = PlaceBand(report.PageHeader, Measure(report.PageHeader, measurer), measurer);
    document.footer = PlaceBand(report.PageFooter, Measure(report.PageFooter, measurer), measurer);
    bool stopped = false;
    for (bool endOfData = false; !stopped;) {
        report.FetchData(endOfData);
        if (endOfData) {
            break;
        }
        report.Detail = detailDesign;
        BindFields(report.Detail, report.Fields);
        report.Detail_Format();
        const SectionLines lines = Measure(report.Detail, measurer);
        Grow(report.Detail, lines, measurer);
        report.Detail_BeforePrint();
        document.details.push_back(PlaceBand(report.Detail, lines, measurer));
        stopped = progress && !progress(static_cast<int>(document.details.size()));
    }
    if (stopped) {
        return std::nullopt;
    }
    BreakIntoPages(document);
    return document;
}

} // namespace Tarno
