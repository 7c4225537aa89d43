// Runs Tarno until its window is painted.
//   start_tarno DIR     with the log in folder DIR

#include "FirstPaint.h"
#include "app/mStart.h"

using namespace Tarno;

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    const FirstPaint firstPaint;
    return argc == 2 ? mStart::Main({QString::fromLocal8Bit(argv[1])}) : 2;
}
