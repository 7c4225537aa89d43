# Precompiles the headers that most sources include: the standard library for the layers without Qt, Qt Core for the
# layers without windows, Qt Widgets for everything else. clang-tidy runs without precompiled headers, so that it
# detects missing includes.

option(TARNO_PRECOMPILE "Use precompiled headers" ON)

set(standardHeaders
    <algorithm> <array> <chrono> <cmath> <filesystem> <fstream> <functional> <map> <memory> <optional> <string>
    <string_view> <utility> <vector> <pugixml.hpp>)
set(widgetHeaders
    <QAbstractButton> <QApplication> <QComboBox> <QDialog> <QHeaderView> <QKeyEvent> <QLabel> <QLineEdit>
    <QListWidget> <QMouseEvent> <QPainter> <QPlainTextEdit> <QPushButton> <QScrollBar> <QTabWidget> <QToolBar>
    <QTreeView> <QVBoxLayout>)

# tarno_header_owner(<kind> HEADERS <headers> LINK <libraries>)
# Adds the target that compiles the headers of one kind for tarno_precompile.
function(tarno_header_owner kind)
    cmake_parse_arguments(OWNER "" "" "HEADERS;LINK" ${ARGN})
    set(source "${CMAKE_BINARY_DIR}/precompiled_${kind}.cpp")
    file(CONFIGURE OUTPUT "${source}" CONTENT "// only compiles the precompiled headers\n")
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
# Compiles the target with the precompiled headers that match its libraries.
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
