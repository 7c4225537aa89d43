# Helper functions that declare the targets of the project.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()

set(CMAKE_AUTOGEN_ORIGIN_DEPENDS OFF) # moc and uic do not need the linked libraries

find_program(TARNO_CCACHE ccache)
if(TARNO_CCACHE)
    # ccache caches sources with a precompiled header only with this sloppiness
    set(CMAKE_CXX_COMPILER_LAUNCHER
        "${CMAKE_COMMAND}" -E env CCACHE_SLOPPINESS=pch_defines,time_macros "${TARNO_CCACHE}")
endif()

find_program(TARNO_MOLD mold)
if(TARNO_MOLD AND NOT CMAKE_CROSSCOMPILING)
    add_link_options(-fuse-ld=mold)
endif()

# Options of all our targets: the include root, the warnings, the strict Qt definitions.
add_library(tarno_options INTERFACE)
target_include_directories(tarno_options INTERFACE "${PROJECT_SOURCE_DIR}/src")
target_compile_options(tarno_options INTERFACE
    $<$<CXX_COMPILER_ID:GNU,Clang>:-Wall -Wextra -Wpedantic -Werror>)
target_compile_definitions(tarno_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_KEYWORDS
    QT_NO_FOREACH QT_STRICT_ITERATORS QT_DISABLE_DEPRECATED_BEFORE=0x060400)
# The layers are checked for memory errors and undefined behaviour. The tests are checked for memory errors only,
# because they take most of the build time.
add_library(tarno_layer_options INTERFACE)
if(TARNO_SANITIZE OR TARNO_FUZZ)
    target_compile_options(tarno_options INTERFACE
        -fsanitize=address -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_compile_options(tarno_layer_options INTERFACE -fsanitize=undefined)
    target_link_options(tarno_options INTERFACE -fsanitize=address,undefined)
endif()
if(TARNO_FUZZ)
    target_compile_options(tarno_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# tarno_layer(NAME <name> SOURCES <sorted list> [LINK <libraries>])
# Adds the static library of one folder of src/. A layer links only layers below it.
function(tarno_layer)
    cmake_parse_arguments(LAYER "" "NAME" "SOURCES;LINK" ${ARGN})
    add_library(tarno_${LAYER_NAME} STATIC ${LAYER_SOURCES})
    target_link_libraries(tarno_${LAYER_NAME} PUBLIC tarno_options ${LAYER_LINK} PRIVATE tarno_layer_options)
    if("${LAYER_LINK}" MATCHES "Qt6::Widgets|tarno_ui")
        set_target_properties(tarno_${LAYER_NAME} PROPERTIES AUTOMOC ON AUTOUIC ON)
    endif()
    tarno_precompile(tarno_${LAYER_NAME} ${LAYER_LINK})
endfunction()

# tarno_offscreen(<program>)
# Lets the program run without a display even if Qt is linked statically.
function(tarno_offscreen program)
    if(WIN32)
        qt_import_plugins(${program} INCLUDE Qt6::QOffscreenIntegrationPlugin)
    endif()
endfunction()

# The environment of every test. The timeout of a test function, in milliseconds, is half an hour, because the machine
# may be busy.
set(TARNO_TEST_ENVIRONMENT QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 QTEST_FUNCTION_TIMEOUT=1800000)

# tarno_tests(NAME <folder> CLASSES <tst_...> [LINK <layers>] [SOURCES <other files>] [LABELS <labels>]
#             [LONG <classes>])
# Adds the test program of one folder of tests/, tests_<folder>. Each class is a separate ctest test, which runs in a
# process of its own and without a display. TARNO_TEST_DATA and TARNO_SHIPPED_DATA are the paths of the data folder
# beside the sources and of the shipped files. The LONG classes start first, so that all cores finish together.
function(tarno_tests)
    cmake_parse_arguments(TEST "" "NAME" "CLASSES;LINK;SOURCES;LABELS;LONG" ${ARGN})
    set(program tests_${TEST_NAME})
    set(classSources ${TEST_CLASSES})
    list(TRANSFORM classSources APPEND .cpp)
    add_executable(${program} ${classSources} ${TEST_SOURCES})
    set_target_properties(${program} PROPERTIES AUTOMOC ON)
    target_link_libraries(${program} PRIVATE ${TEST_LINK} tests_main Qt6::Test)
    tarno_offscreen(${program})
    if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13 AND WIN32)
        # GCC 12 reports false positives for strings when it optimises
        target_compile_options(${program} PRIVATE -Wno-array-bounds -Wno-restrict -Wno-stringop-overflow)
    endif()
    target_include_directories(${program} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
    tarno_precompile(${program} ${TEST_LINK} Qt6::Test)
    target_compile_definitions(${program} PRIVATE
        TARNO_TEST_DATA="${CMAKE_CURRENT_SOURCE_DIR}/data"
        TARNO_SHIPPED_DATA="${PROJECT_SOURCE_DIR}/data")
    foreach(class IN LISTS TEST_CLASSES)
        cmake_path(GET class FILENAME name)
        add_test(NAME ${name} COMMAND ${program} ${name})
        set_tests_properties(${name} PROPERTIES ENVIRONMENT "${TARNO_TEST_ENVIRONMENT}" LABELS "${TEST_LABELS}")
        if(name IN_LIST TEST_LONG)
            set_tests_properties(${name} PROPERTIES COST 10)
        endif()
    endforeach()
endfunction()
