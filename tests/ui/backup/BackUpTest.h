#pragma once

#include "backup/BackUp.h"
#include "backup/Restore.h"
#include "support/Lists.h"
#include "support/StdStrings.h"
#include "support/TestProgram.h"

#include <string>

namespace Tarno
{

/// A log with one location and two trips, one of them with a picture in the folder of the log.
class ProgramWithPicture : public TestProgram
{
public:
    ProgramWithPicture()
    {
        Start();
        AddLocation("Pittwater");
        folder.MakeFolder("pictures");
        folder.Write("pictures/snapper.jpg", "a snapper");
        AddTrip("2026-11-02", "pictures/snapper.jpg");
        AddTrip("2026-11-03", "");
    }

    void AddTrip(const char* date, const std::string& picture)
    {
        AddEntry({{EntryField::StartDate, date},
                  {EntryField::EndDate, date},
                  {EntryField::LocNo, "1"},
                  {EntryField::Picture, picture}});
    }

    QString Log() const { return FromUtf8(programFolder.GetAppPath()); }

    void ExpectInformation(const std::string& text)
    {
        messages.ExpectInformation(FromUtf8(text), QStringLiteral("Tarno"));
    }

    void ExpectProblem(const std::string& text, const char* title)
    {
        messages.Expect(
            {.text = FromUtf8(text), .title = QString::fromLatin1(title), .icon = Icon::Exclamation},
            Button::Ok);
    }
};

} // namespace Tarno
