#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <utility>

namespace Tarno
{

/// A row of a table in an RTF file.
struct RtfRow {
    QStringList cells; ///< fields are shown as "<PAGE>", pictures as "<picture>", \line as a line break
    QList<int> edges;  ///< right edges of the cells
    QStringList words; ///< control words of the row and its cells
    QHash<QString, QList<int>> numbers; ///< the numbers of each control word
    int borders = 0;                    ///< number of cells with a lower border
};

/// The contents of an RTF file.
struct RtfReading {
    QString fault;           ///< why the file is not well-formed, or empty
    QHash<QString, int> set; ///< control words outside tables, with their numbers
    QString title;
    QString fonts; ///< text of the font table
    QList<RtfRow> header;
    QList<RtfRow> footer;
    QList<RtfRow> body;
};

/// Reads RTF as a word processor does.
class RtfReader
{
public:
    static RtfReading Read(const QByteArray& rtf)
    {
        RtfReader reader(rtf);
        reader.Run();
        return reader.m_reading;
    }

private:
    enum class Place { Body, Header, Footer, Fonts, Title, Field, Nowhere };

    explicit RtfReader(QByteArray rtf) : m_rtf(std::move(rtf)) {}

    void Run()
    {
        if (!m_rtf.startsWith("{\\rtf1")) {
            Fault("does not start as RTF");
        }
        while (m_at < m_rtf.size()) {
            const char byte = m_rtf[m_at++];
            if (static_cast<unsigned char>(byte) > 0x7E || (byte < 0x20 && byte != '\n')) {
                Fault("contains a byte that is not printable ASCII");
            } else if (byte == '{') {
                m_places.append(m_places.last());
            } else if (byte == '}') {
                if (m_places.size() == 1) {
                    Fault("closes more groups than it opens");
                    return;
                }
                m_places.removeLast();
                if (m_places.size() == 1 && !m_rtf.mid(m_at).trimmed().isEmpty()) {
                    Fault("contains text after its end");
                }
            } else if (byte == '\\') {
                Control();
            } else if (byte != '\n') {
                Text(QChar::fromLatin1(byte));
            }
        }
        if (m_places.size() != 1) {
            Fault("leaves a group open");
        }
    }

    void Control()
    {
        const char first = m_at < m_rtf.size() ? m_rtf[m_at] : ' ';
        if (first == '\\' || first == '{' || first == '}') {
            ++m_at;
            Text(QChar::fromLatin1(first));
            return;
        }
        if (first == '*') { // marks a destination that readers may ignore
            ++m_at;
            return;
        }
        QString word;
        while (m_at < m_rtf.size() && m_rtf[m_at] >= 'a' && m_rtf[m_at] <= 'z') {
            word += QLatin1Char(m_rtf[m_at++]);
        }
        QByteArray number;
        while (m_at < m_rtf.size() &&
               (QChar::isDigit(static_cast<uint>(m_rtf[m_at])) || (number.isEmpty() && m_rtf[m_at] == '-'))) {
            number += m_rtf[m_at++];
        }
        if (m_at < m_rtf.size() && m_rtf[m_at] == ' ') {
            ++m_at;
        }
        if (word.isEmpty()) {
            Fault("contains an unknown escape");
        }
        Word(word, number.toInt());
    }

    void Word(const QString& word, int number)
    {
        static const QHash<QString, Place> places{
            {QStringLiteral("header"), Place::Header}, {QStringLiteral("footer"), Place::Footer},
            {QStringLiteral("fonttbl"), Place::Fonts}, {QStringLiteral("title"), Place::Title},
            {QStringLiteral("fldinst"), Place::Field}, {QStringLiteral("fldrslt"), Place::Nowhere},
            {QStringLiteral("pict"), Place::Nowhere},
        };
        if (word == QLatin1String("pict")) {
            Text(QStringLiteral("<picture>"));
        }
        if (const auto place = places.find(word); place != places.end()) {
            m_places.last() = *place;
        } else if (word == QLatin1String("u")) {
            Text(QChar(static_cast<char16_t>(number)));
            ++m_at; // skips the fallback for readers without Unicode
        } else if (word == QLatin1String("line")) {
            Text(QStringLiteral("\n"));
        } else if (word == QLatin1String("tab")) {
            Text(QStringLiteral("\t"));
        } else if (word == QLatin1String("trowd")) {
            m_row = {};
            m_cell.clear();
        } else if (word == QLatin1String("cellx")) {
            m_row.edges << number;
        } else if (word == QLatin1String("clbrdrb")) {
            ++m_row.borders;
        } else if (word == QLatin1String("cell")) {
            m_row.cells << m_cell;
            m_cell.clear();
        } else if (word == QLatin1String("row")) {
            EndRow();
        } else {
            m_row.words << word;
            m_row.numbers[word] << number;
            m_reading.set.insert(word, number);
        }
    }

    void EndRow()
    {
        if (m_row.cells.size() != m_row.edges.size()) {
            Fault("has a row with different numbers of cells and edges");
        }
        for (int cell = 0; cell < m_row.edges.size(); ++cell) {
            if (m_row.edges[cell] <= (cell > 0 ? m_row.edges[cell - 1] : 0)) {
                Fault("has cells whose edges are not in ascending order");
            }
        }
        (m_places.last() == Place::Header   ? m_reading.header
         : m_places.last() == Place::Footer ? m_reading.footer
                                            : m_reading.body)
            << m_row;
        m_row = {};
    }

    void Text(const QString& text)
    {
        switch (m_places.last()) {
        case Place::Fonts:
            m_reading.fonts += text;
            break;
        case Place::Title:
            m_reading.title += text;
            break;
        case Place::Field:
            m_cell += (m_cell.endsWith(QLatin1Char('>')) ? QString() : QStringLiteral("<>"));
            m_cell.insert(m_cell.size() - 1, text);
            break;
        case Place::Nowhere:
            break;
        default:
            m_cell += text;
        }
    }

    void Fault(const char* fault)
    {
        if (m_reading.fault.isEmpty()) {
            m_reading.fault = QStringLiteral("%1 (at byte %2)").arg(QLatin1String(fault)).arg(m_at);
        }
    }

    QByteArray m_rtf;
    qsizetype m_at = 0;
    QList<Place> m_places{Place::Body};
    RtfReading m_reading;
    RtfRow m_row;
    QString m_cell;
};

} // namespace Tarno
