# The helpers with which every CMakeLists.txt of the tree declares its target.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()

find_program(TARNO_CCACHE ccache)
if(TARNO_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${TARNO_CCACHE}")
endif()

if(TARNO_TIDY)
    find_program(TARNO_CLANG_TIDY NAMES clang-tidy-14 clang-tidy REQUIRED)
    set(CMAKE_CXX_CLANG_TIDY "${TARNO_CLANG_TIDY};--quiet")
endif()

# What every target of ours shares: the include root, the warnings, the strict Qt defines.
add_library(tarno_options INTERFACE)
target_include_directories(tarno_options INTERFACE "${PROJECT_SOURCE_DIR}/src")
target_compile_options(tarno_options INTERFACE
    $<$<CXX_COMPILER_ID:GNU,Clang>:-Wall -Wextra -Wpedantic -Werror>)
target_compile_definitions(tarno_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_KEYWORDS
    QT_NO_FOREACH QT_STRICT_ITERATORS QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(TARNO_SANITIZE OR TARNO_FUZZ)
    target_compile_options(tarno_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(tarno_options INTERFACE -fsanitize=address,undefined)
endif()
if(TARNO_FUZZ)
    target_compile_options(tarno_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# tarno_floor(NAME <name> SOURCES <sorted list> [LINK <libraries>])
# One static library for one folder of src/. Floors link only the floors below them.
function(tarno_floor)
    cmake_parse_arguments(FLOOR "" "NAME" "SOURCES;LINK" ${ARGN})
    add_library(tarno_${FLOOR_NAME} STATIC ${FLOOR_SOURCES})
    target_link_libraries(tarno_${FLOOR_NAME} PUBLIC tarno_options ${FLOOR_LINK})
    if("${FLOOR_LINK}" MATCHES "Qt6::|tarno_ui")
        set_target_properties(tarno_${FLOOR_NAME} PROPERTIES AUTOMOC ON AUTOUIC ON)
    endif()
endfunction()

# tarno_offscreen(<program>)
# The program can run without a display, also where Qt is linked statically.
function(tarno_offscreen program)
    if(WIN32)
        qt_import_plugins(${program} INCLUDE Qt6::QOffscreenIntegrationPlugin)
    endif()
endfunction()

# tarno_test(NAME tst_<class> [LINK <floors>] [SOURCES <files besides tst_<class>.cpp>])
# One Qt Test program; it runs without a display, links its own floor, and may read the files
# beside its source and the files that ship (TARNO_TEST_DATA, TARNO_SHIPPED_DATA).
function(tarno_test)
    cmake_parse_arguments(TEST "" "NAME" "LINK;SOURCES" ${ARGN})
    add_executable(${TEST_NAME} ${TEST_NAME}.cpp ${TEST_SOURCES})
    set_target_properties(${TEST_NAME} PROPERTIES AUTOMOC ON)
    target_link_libraries(${TEST_NAME} PRIVATE ${TEST_LINK} Qt6::Test)
    tarno_offscreen(${TEST_NAME})
    if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13 AND WIN32)
        # optimising, GCC 12 sees texts overlap that do not
        target_compile_options(${TEST_NAME} PRIVATE -Wno-restrict)
    endif()
    target_include_directories(${TEST_NAME} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
    target_compile_definitions(${TEST_NAME} PRIVATE
        TARNO_TEST_DATA="${CMAKE_CURRENT_SOURCE_DIR}/data"
        TARNO_SHIPPED_DATA="${PROJECT_SOURCE_DIR}/data")
    add_test(NAME ${TEST_NAME} COMMAND ${TEST_NAME})
    set_tests_properties(${TEST_NAME} PROPERTIES TIMEOUT 300
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;ASAN_OPTIONS=detect_leaks=0")
endfunction()
