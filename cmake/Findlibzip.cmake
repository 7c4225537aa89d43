# Finds libzip with its headers and provides libzip::zip. Debian's own configuration also requires the tools of libzip,
# which are in a package of their own. The static library of the Windows program needs zlib.
find_path(LIBZIP_INCLUDE zip.h)
find_library(LIBZIP_LIBRARY NAMES zip libzip)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(libzip REQUIRED_VARS LIBZIP_LIBRARY LIBZIP_INCLUDE)
if(libzip_FOUND AND NOT TARGET libzip::zip)
    add_library(libzip::zip UNKNOWN IMPORTED)
    set_target_properties(libzip::zip PROPERTIES
        IMPORTED_LOCATION "${LIBZIP_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${LIBZIP_INCLUDE}")
    if(WIN32)
        find_package(ZLIB REQUIRED)
        target_compile_definitions(libzip::zip INTERFACE ZIP_STATIC)
        target_link_libraries(libzip::zip INTERFACE ZLIB::ZLIB advapi32)
    endif()
endif()
mark_as_advanced(LIBZIP_INCLUDE LIBZIP_LIBRARY)
