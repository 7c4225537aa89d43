#pragma once

#include "EveryWindow.h"
#include "core/Paths.h"
#include "support/TestProgram.h"
#include "support/Windows.h"
#include "ui/common/ScreenFit.h"

#include <functional>
#include <string>
#include <utility>

namespace Tarno
{

// How a window is shown in one of its states.

using Step = std::function<void(QWidget& window)>;

inline const Step asOpened = [](QWidget& /*window*/) {};

inline QSize screenSize(1920, 1080);

/// The program with the sample log, including pictures.
class SampleProgram : public TestProgram
{
public:
    SampleProgram()
    {
        UseSample();
        folder.MakeFolder("pictures");
        for (const char* picture : {"pittwater", "snapper", "trout"}) {
            const std::string name = std::string("pictures/") + picture + ".png";
            folder.Write(name, ReadWholeFile(TARNO_SHIPPED_DATA "/sample/" + name));
        }
        Start();
    }
};

class EmptyProgram : public TestProgram
{
public:
    EmptyProgram() { Start(); }
};

/// Processes events until the layouts are stable. A layout that changes posts an event to its parent.
inline void Settle()
{
    constexpr int nesting = 8; // more than the deepest nesting of layouts
    for (int round = 0; round < nesting; ++round) {
        QCoreApplication::processEvents();
    }
}

inline void ShowModeless(QWidget& window, const Step& prepare, const Visit& visit)
{
    const ScreenFit screenFit(screenSize);
    window.show();
    AwaitActive(window);
    prepare(window);
    Settle();
    visit(window);
}

/// Calls `open`, which shows the modal window `name`, then prepares, visits and closes that window.
template <typename Open>
void ShowModally(const char* name, Open&& open, const Step& prepare, const Visit& visit)
{
    const ScreenFit screenFit(screenSize);
    WhileOpen(name, std::forward<Open>(open), [&](QDialog& window) {
        prepare(window);
        Settle();
        visit(window);
        window.setFocus(); // leaves a refused box, which would keep the window open
        window.done(QDialog::Rejected);
    });
}

} // namespace Tarno
