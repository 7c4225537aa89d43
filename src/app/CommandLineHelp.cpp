#include "CommandLine.h"

namespace Tarno
{

std::string HelpText()
{
    return R"(Usage: tarno [--folder DIR] [COMMAND]
A fishing log for one angler. Without a command, Tarno opens its window.

Commands, which need no display:
  --list [QUERY]                print the trips found: date, place, action and
                                catch, separated by tabs
  --export FILE.csv             export trips as a table; "-" is standard output
      --find QUERY              only the trips found
  --export FILE.gpx             export locations as way points
  --import FILE.csv             import the new trips of a table; "-" is standard
                                input
      --dry-run                 only show what would be imported
      --add-places              also add locations without coordinates
  --import FILE.gpx             import the new locations of a GPX file
      --dry-run                 only show what would be imported
  --check                       check the files of the log; changes nothing
  --forecast PLACE              print a line for each day: rating, moon, times
      --from DATE               the first day, for example 2026-03-31; today
      --days N                  the number of days; 7
  --report NAME --output FILE   print a saved report, or "default", to a PDF or
                                RTF file
      --location PLACE          only the trips to this location
      --find QUERY              only the trips found
  --calendar PLACE --month YYYY-MM --output FILE
                                write a month to a PDF or iCalendar (.ics) file
  --backup FILE.zip             back up the log with its pictures
  --restore FILE.zip            replace the log by a back-up; creates the folder
                                if it does not exist

Options:
  --folder DIR                  use the log in DIR
  -h, --help                    show this help
  -v, --version                 show the version

Queries are those of the find bar. Options of Qt, such as -style, are accepted.
Exit status: 0 if it was done, 1 if it could not be done, 2 for wrong usage.
)";
}

} // namespace Tarno
