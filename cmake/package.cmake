# What cpack makes: for Debian a package of each component, and tarballs of everything and of the
# sources. scripts/package calls it.
set(CPACK_PACKAGE_NAME quorvel)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "The Quorvel authors")
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)

set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/debian/adjust_staging.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/normalize_packages.cmake)
set(CPACK_SYSTEM_NAME ${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_SOURCE_PACKAGE_FILE_NAME quorvel-${PROJECT_VERSION}-source)
string(REGEX REPLACE "([][+.*()^?$|\\])" "\\\\\\1" sourceDir ${PROJECT_SOURCE_DIR})
set(CPACK_SOURCE_IGNORE_FILES "^${sourceDir}/build/" "/\\.git(/|$)")

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The Quorvel authors <quorvel@example.org>")
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# The first line of each description is the summary.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_DEBIAN_TOOL_PACKAGE_NAME quorvel)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOL_DESCRIPTION "adds entries to the arrays of an XML property list in place
Given a key=value file, Quorvel puts one new string at the head of each
array that the file names. It either inserts every value or changes
nothing, a second run changes nothing, and every other byte of the list
stays as it was: comments, layout, a symbolic link that leads to it.

It is meant for scripts that add a smart-card reader to a driver's list
of readers, on many machines, again and again.")
if(NOT QUORVEL_LINKS_STATIC)
    set(CPACK_DEBIAN_TOOL_PACKAGE_SHLIBDEPS ON)
endif()

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libquorvel-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "configuration files, buffers and text conversion for C++
Two static libraries with their headers, for C++20. One has a property
store, configuration files, file and string helpers; the other has result
codes, byte buffers, hex and base64, and conversion between Windows-1251,
UCS-2, wide characters and UTF-8.")
include(CPack)
