#pragma once

#include "CommandTest.h"
#include "support/Proposals.h"

#include <QLabel>

#include <string>
#include <vector>

namespace Tarno
{

// Helpers to find trips in the main window as its user does.

/// A log of four trips to two places.
class FourTrips : public TestProgram
{
public:
    FourTrips()
    {
        Start();
        AddLocation("Pittwater");
        AddLocation("Lake Eucumbene");
        Add("2003-02-05", "1", "2 bream", "Squid");
        Add("2003-02-06", "2", "1 trout", "Worm");
        Add("2003-03-07", "1", "3 bream~CL~1 tailor", "Squid");
        Add("2003-03-08", "2", "", "Fly");
    }

private:
    void Add(const char* date, const char* place, const char* caught, const char* bait)
    {
        AddEntry({{EntryField::StartDate, date},
                  {EntryField::EndDate, date},
                  {EntryField::StartTime, "06:00"},
                  {EntryField::EndTime, "12:00"},
                  {EntryField::LocNo, place},
                  {EntryField::MoonPhase, "45"},
                  {EntryField::Major1, "04:01"},
                  {EntryField::Major2, "16:26"},
                  {EntryField::Minor1, "10:13"},
                  {EntryField::Minor2, "22:37"},
                  {EntryField::FishCaught, caught},
                  {EntryField::BaitUsed, bait}});
    }
};

inline QLineEdit& FindBox(const QWidget& window)
{
    return Find<QLineEdit>(window, "txtFind");
}

inline bool IsBarOpen(const QWidget& window)
{
    return Find<QWidget>(window, "queryBar").isVisible();
}

/// Opens the find bar by key and replaces its query by typing. No proposals stay open.
inline void FindTrips(const QWidget& window, const char* query)
{
    Press(window, Qt::Key_F, Qt::ControlModifier);
    Press(window, Qt::Key_Backspace);
    Type(window, query);
    CloseProposals(window);
}

/// Returns the text of a label.
inline std::string LabelText(const QWidget& window, const char* name)
{
    return ToUtf8(Find<QLabel>(window, name).text());
}

inline std::string Count(const QWidget& window)
{
    return LabelText(window, "lblFound");
}

/// Returns the keys of the trips that are marked, because they were just saved.
inline Texts MarkedKeys(const QWidget& window)
{
    const QAbstractItemModel* model = List(window).model();
    Texts keys;
    for (int row = 0; row < model->rowCount(); ++row) {
        const QModelIndex cell = model->index(row, 0);
        if (cell.data(Qt::FontRole).value<QFont>().italic()) {
            keys.push_back(ToUtf8(cell.data(TextTableModel::keyRole).toString()));
        }
    }
    return keys;
}

inline void DeleteSelected(TestProgram& program, fTarno& window)
{
    program.messages.Expect(deleteQuestion, Button::Yes);
    window.Delete();
}

} // namespace Tarno
