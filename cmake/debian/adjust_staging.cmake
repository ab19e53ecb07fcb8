# cpack runs this over the staged files: what Debian wants otherwise than the installation has it.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
    return()
endif()

function(stage component package)
    set(share ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${component}/usr/share)
    set(doc ${share}/doc/${package})
    file(MAKE_DIRECTORY ${doc})
    file(RENAME ${share}/doc/quorvel/LICENSE ${doc}/copyright)
    # The time is that of SOURCE_DATE_EPOCH, where it is set.
    string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
    file(WRITE ${doc}/changelog "quorvel (${CPACK_PACKAGE_VERSION}) unstable; urgency=medium\n\n"
        "  * See CHANGELOG.md.\n\n -- ${CPACK_DEBIAN_PACKAGE_MAINTAINER}  ${date}\n")
    file(GLOB compressed ${doc}/changelog ${share}/man/*/*)
    execute_process(COMMAND gzip --best --no-name ${compressed} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

stage(tool quorvel)
stage(development libquorvel-dev)

set(share ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/tool/usr/share)
file(RENAME ${share}/zsh/site-functions ${share}/zsh/vendor-completions)
configure_file(${CMAKE_CURRENT_LIST_DIR}/lintian-overrides ${share}/lintian/overrides/quorvel COPYONLY)
