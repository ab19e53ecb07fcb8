# What `cmake --install` puts where: the component `tool`, and `development` for programs that use
# the libraries. The installed tree can be moved as a whole.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)
set(docDir ${CMAKE_INSTALL_DATADIR}/doc/quorvel)

# The tool
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME tool)
install(TARGETS Quorvel)
install(PROGRAMS app/quorvel-check TYPE BIN)
install(FILES docs/man/Quorvel.1 docs/man/quorvel-check.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES docs/man/Quorvel.cfg.5 DESTINATION ${CMAKE_INSTALL_MANDIR}/man5)
# bash and fish look for them under the name of the command.
foreach(command Quorvel quorvel-check)
    install(FILES app/completions/Quorvel.bash RENAME ${command}
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
    install(FILES app/completions/Quorvel.fish RENAME ${command}.fish
        DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
endforeach()
install(FILES app/completions/_Quorvel DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
install(FILES CHANGELOG.md CONTRIBUTING.md LICENSE README.md SECURITY.md DESTINATION ${docDir})
install(FILES docs/fleet.md docs/main_job.svg docs/performance.md docs/saving.md DESTINATION ${docDir}/docs)
install(DIRECTORY examples DESTINATION ${docDir} USE_SOURCE_PERMISSIONS
    PATTERN *.cpp EXCLUDE PATTERN CMakeLists.txt EXCLUDE)

# The libraries, their headers, and what tells CMake and pkg-config of them
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME development)
set(headerDir ${CMAKE_INSTALL_INCLUDEDIR}/quorvel)
set(packageDir ${CMAKE_INSTALL_LIBDIR}/cmake/Quorvel)
install(TARGETS quorvel_core quorvel_utility EXPORT QuorvelTargets
    FILE_SET HEADERS DESTINATION ${headerDir} INCLUDES DESTINATION ${headerDir})
install(EXPORT QuorvelTargets NAMESPACE Quorvel:: DESTINATION ${packageDir})
write_basic_package_version_file(QuorvelConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES cmake/QuorvelConfig.cmake ${PROJECT_BINARY_DIR}/QuorvelConfigVersion.cmake
    DESTINATION ${packageDir})
install(FILES LICENSE DESTINATION ${docDir})
install(FILES docs/libraries.md DESTINATION ${docDir}/docs)
file(GLOB programs examples/*.cpp)
install(FILES examples/CMakeLists.txt ${programs} DESTINATION ${docDir}/examples)

function(install_pkg_config library description requires libraries)
    # Seen from the file itself: the prefix is not known before it is installed.
    file(RELATIVE_PATH includeDir
        ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_FULL_INCLUDEDIR}/quorvel)
    configure_file(cmake/quorvel.pc.in quorvel-${library}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/quorvel-${library}.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endfunction()

if(NOT Iconv_IS_BUILT_IN)
    set(iconvLibrary -liconv)
endif()
install_pkg_config(core "Byte buffers, encodings and text conversion" "" "${iconvLibrary}")
install_pkg_config(utility "Property store, configuration files, file and string helpers" quorvel-core "")
