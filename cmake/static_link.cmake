# Sets staticLink to the options that link the tool in the Release build: statically if possible, since
# loading libraries would take a quarter of a run, and since the program runs where they are missing.
include(CheckLinkerFlag)
include(CheckSourceCompiles)

# Otherwise, a project above that has called check_pie_supported adds -pie, which overrides -static-pie.
set(CMAKE_CXX_LINK_PIE_SUPPORTED OFF)
check_linker_flag(CXX -static QUORVEL_LINKS_STATIC)
check_linker_flag(CXX -static-pie QUORVEL_LINKS_STATIC_PIE)
if(QUORVEL_LINKS_STATIC_PIE)
    set(staticLink -static-pie)
elseif(QUORVEL_LINKS_STATIC)
    set(staticLink -static)
else()
    set(staticLink -static-libstdc++ -static-libgcc -pie)
endif()

# A static-pie relocates itself when it starts, which takes less time with packed relocations. glibc
# has supported them since 2.36; a linker that does not warns that it ignores the option.
set(CMAKE_REQUIRED_LINK_OPTIONS -static-pie -Wl,-z,pack-relative-relocs)
check_source_compiles(CXX [[
    #include <features.h>
    #if !__GLIBC_PREREQ(2, 36)
    #error
    #endif
    int main() {}]] QUORVEL_PACKS_RELOCATIONS FAIL_REGEX "warning:")
unset(CMAKE_REQUIRED_LINK_OPTIONS)
if(QUORVEL_PACKS_RELOCATIONS)
    list(APPEND staticLink -Wl,-z,pack-relative-relocs)
endif()
