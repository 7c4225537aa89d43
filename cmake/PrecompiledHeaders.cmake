# The headers that most sources include, compiled once: those of the standard library for the layers without Qt, Qt
# Core's for what shows no window, Qt Widgets' for everything else. clang-tidy works without them, so that it sees a
# header that a source forgets to include.

option(TARNO_PRECOMPILE "Use precompiled headers" ON)

set(standardHeaders
    <algorithm> <array> <chrono> <cmath> <filesystem> <fstream> <functional> <map> <memory> <optional> <string>
    <string_view> <utility> <vector> <pugixml.hpp>)
set(widgetHeaders
    <QAbstractButton> <QApplication> <QComboBox> <QDialog> <QHeaderView> <QKeyEvent> <QLabel> <QLineEdit>
    <QListWidget> <QMouseEvent> <QPainter> <QPlainTextEdit> <QPushButton> <QScrollBar> <QTabWidget> <QToolBar>
    <QTreeView> <QVBoxLayout>)

# tarno_header_owner(<kind> HEADERS <headers> LINK <libraries>)
# The target that compiles the headers for tarno_precompile(... <kind>).
function(tarno_header_owner kind)
    cmake_parse_arguments(OWNER "" "" "HEADERS;LINK" ${ARGN})
    set(source "${CMAKE_BINARY_DIR}/precompiled_${kind}.cpp")
    file(CONFIGURE OUTPUT "${source}" CONTENT "// has nothing but the headers\n")
    add_library(tarno_headers_${kind} OBJECT "${source}")
    target_link_libraries(tarno_headers_${kind} PRIVATE tarno_options ${OWNER_LINK})
    target_precompile_headers(tarno_headers_${kind} PRIVATE ${OWNER_HEADERS})
endfunction()

if(TARNO_PRECOMPILE)
    tarno_header_owner(standard HEADERS ${standardHeaders} LINK pugixml::pugixml)
    tarno_header_owner(core HEADERS ${standardHeaders} <QtCore> LINK pugixml::pugixml Qt6::Core)
    tarno_header_owner(widgets HEADERS ${standardHeaders} <QtCore> ${widgetHeaders}
        LINK pugixml::pugixml Qt6::Widgets)
endif()

# tarno_precompile(<target> <linked libraries>)
# Compiles the sources of the target with the precompiled headers for what it links.
function(tarno_precompile target)
    if(NOT TARNO_PRECOMPILE)
        return()
    endif()
    set(kind standard)
    if("${ARGN}" MATCHES "Qt6::Widgets|tarno_ui|tarno_app|looks")
        set(kind widgets)
    elseif("${ARGN}" MATCHES "Qt6::|tarno_qt|tarno_reports")
        set(kind core)
    endif()
    target_precompile_headers(${target} REUSE_FROM tarno_headers_${kind})
endfunction()
