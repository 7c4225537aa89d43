#pragma once

#include "reports/engine/Document.h"
#include "reports/engine/ReportFonts.h"

#include <QByteArray>
#include <QStringList>

namespace Tarno
{

/// Returns a control word with its number.
QByteArray RtfWord(const char* word, int number);

/// The fonts of an RTF file in the order of their first use.
class RtfFonts
{
public:
    int IndexOf(const QString& family);
    QByteArray Table() const;

private:
    QStringList m_families;
};

/// Writes the bands of a document as rows of tables, with the heights and distances of the layout.
class RtfBands
{
public:
    explicit RtfBands(const Document& document);

    /// Writes `band`, with its last row lower by `shorter` twips.
    QByteArray Write(const Band& band, int shorter = 0);

    /// Returns the fonts of the bands written so far.
    const RtfFonts& Fonts() const { return m_fonts; }

private:
    int m_width;
    int m_room; ///< height of the space for details on a page
    RtfFonts m_fonts;
    TextMeasurer m_measurer;
};

} // namespace Tarno
