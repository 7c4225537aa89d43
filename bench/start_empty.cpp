// A program with an empty window, as the baseline for the start of Tarno.

#include "FirstPaint.h"

#include <QWidget>

using namespace Tarno;

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    const FirstPaint firstPaint;
    QWidget window;
    window.resize(900, 500);
    window.show();
    return QApplication::exec();
}
