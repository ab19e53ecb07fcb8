# cpack runs this over the packages that it has made. What it takes from the user and the file system
# where it works comes out the same everywhere: in a tarball the order, owner and mode of the files, in
# a Debian package their mode and the sizes of folders in what is called the installed size.
# The commands are those of Debian; on other systems than Linux the packages stay as they are.
if(NOT CMAKE_HOST_SYSTEM_NAME STREQUAL "Linux")
    return()
endif()
set(unpacked ${CPACK_TEMPORARY_DIRECTORY}-unpacked)

function(run)
    execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${unpacked} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

function(repack_tarball package)
    # The folder at the top is new; dpkg-deb sees to the time by itself.
    if(DEFINED ENV{SOURCE_DATE_EPOCH})
        set(time --mtime=@$ENV{SOURCE_DATE_EPOCH})
    endif()
    run(tar --extract --file ${package})
    run(chmod -R u=rwX,go=rX .)
    run(tar --create --gzip --file ${package} --sort=name --owner=root:0 --group=root:0
        ${time} ${CPACK_PACKAGE_FILE_NAME})
endfunction()

function(repack_debian package)
    run(dpkg-deb --raw-extract ${package} .)
    run(chmod -R u=rwX,go=rX .)
    # In kibibytes, of which each file begins a new one and each folder and link is one, as Debian counts.
    run(sh -ec "cd usr
        size=$(find . -printf '%y %s\\n' | awk '{n += $1 == \"f\" ? int(($2 + 1023) / 1024) : 1} END {print n}')
        sed -i \"s/^Installed-Size: .*/Installed-Size: $size/\" ../DEBIAN/control")
    run(dpkg-deb --root-owner-group -Zxz --build . ${package})
endfunction()

foreach(package ${CPACK_PACKAGE_FILES})
    file(REMOVE_RECURSE ${unpacked})
    file(MAKE_DIRECTORY ${unpacked})
    if(CPACK_GENERATOR STREQUAL "DEB")
        repack_debian(${package})
    else()
        repack_tarball(${package})
    endif()
endforeach()
