#pragma once

#include "EntryTest.h"

#include <QColor>
#include <QImage>
#include <QScrollBar>
#include <QSlider>
#include <QStringList>

#include <initializer_list>
#include <string>
#include <utility>

namespace Tarno
{

// Helpers to operate the page "Picture" of the entry editor as its user does.

/// Opens the editor for an entry whose picture is `path` and runs `steps` on its page "Picture".
template <typename Steps>
int EditPicture(ProgramWithPlace& program, const std::string& path, Steps&& steps)
{
    const int key = program.AddCompleteEntry({{EntryField::Picture, path}});
    Edit(program, key, [&](QDialog& editor) {
        ShowPageOf(editor, Find<QWidget>(editor, "frPic"));
        steps(editor);
    });
    return key;
}

/// Does the same with `bytes` in the file `name` of the program folder.
template <typename Steps>
int EditPicture(ProgramWithPlace& program, const char* name, const std::string& bytes, Steps&& steps)
{
    program.folder.Write(name, bytes);
    return EditPicture(program, program.folder.PathOf(name), std::forward<Steps>(steps));
}

inline FileQuestion ChooseIn(const TestProgram& program)
{
    return {.title = QStringLiteral("Select the image to display"),
            .filter = QStringLiteral("*.bmp,*.jpg,*.tif,*.gif,*.ico,*.wmf "
                                     "(*.bmp *.jpg *.tif *.gif *.ico *.wmf);;All Files (*)"),
            .folder = FromUtf8(program.folder.Path() + '/'),
            .fileName = QStringLiteral("Image Files")};
}

inline QSlider& Zoom(const QWidget& editor)
{
    return Find<QSlider>(editor, "sldZoom");
}

inline QScrollBar& Down(const QWidget& editor)
{
    return Find<QScrollBar>(editor, "vscPic");
}

inline QWidget& Picture(const QWidget& editor)
{
    return Find<QWidget>(editor, "picCatch");
}

/// Returns the hidden source of the visible picture.
inline QWidget& Source(const QWidget& editor)
{
    return Find<QWidget>(editor, "imgCatch");
}

/// Returns the visible area in the coordinates of the picture's parent.
inline QRect Frame(const QWidget& editor)
{
    return Find<QWidget>(editor, "frPic").contentsRect();
}

inline bool IsEnabled(const QWidget& editor, const char* control)
{
    return Find<QWidget>(editor, control).isEnabled();
}

/// The names of the enabled controls.
inline QStringList EnabledControls(const QWidget& editor)
{
    QStringList enabled;
    for (const char* control : {"cmdLoad", "cmdRemove", "sldZoom", "hscPic", "vscPic"}) {
        if (IsEnabled(editor, control)) {
            enabled.append(QLatin1String(control));
        }
    }
    return enabled;
}

inline QStringList Names(std::initializer_list<const char*> names)
{
    QStringList list;
    for (const char* name : names) {
        list.append(QLatin1String(name));
    }
    return list;
}

/// Whether the panel shows no picture.
inline bool IsEmpty(const QWidget& editor)
{
    const QImage seen = Picture(editor).grab().toImage();
    for (int y = 0; y < seen.height(); y += 7) {
        for (int x = 0; x < seen.width(); x += 7) {
            if (seen.pixel(x, y) != seen.pixel(0, 0)) {
                return false;
            }
        }
    }
    return Picture(editor).size() == Frame(editor).size() - QSize(1, 1);
}

/// Returns the colour of the picture at a position in percent of its width and height.
inline QColor Colour(const QWidget& editor, int across, int down)
{
    const QImage seen = Picture(editor).grab().toImage();
    return seen.pixelColor(seen.width() * across / 100, seen.height() * down / 100);
}

inline bool IsNear(const QColor& colour, const QColor& expected)
{
    return qAbs(colour.red() - expected.red()) < 40 && qAbs(colour.green() - expected.green()) < 40 &&
           qAbs(colour.blue() - expected.blue()) < 40;
}

} // namespace Tarno
