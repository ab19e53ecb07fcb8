# Hardens the Release build with what the compiler and the linker support. With a static-pie, all of it
# takes about 1 % of a run of the tool. Programs that use the libraries choose their own options.
include(CheckCompilerFlag)
include(CheckLinkerFlag)
include(CheckSourceCompiles)

# Checks with the flags of the configuration that is hardened.
set(CMAKE_TRY_COMPILE_CONFIGURATION Release)
check_compiler_flag(CXX -fstack-protector-strong QUORVEL_HAS_STACK_PROTECTOR)
# A level that the compiler or the user's flags define takes precedence.
check_source_compiles(CXX "
    #ifdef _FORTIFY_SOURCE
    #error
    #endif
    int main() {}" QUORVEL_LACKS_FORTIFY_SOURCE)
check_linker_flag(CXX -Wl,-z,relro,-z,now QUORVEL_HAS_RELRO)
unset(CMAKE_TRY_COMPILE_CONFIGURATION)

if(QUORVEL_HAS_STACK_PROTECTOR)
    add_compile_options($<$<CONFIG:Release>:-fstack-protector-strong>)
endif()
if(QUORVEL_LACKS_FORTIFY_SOURCE)
    add_compile_definitions($<$<CONFIG:Release>:_FORTIFY_SOURCE=2>)
endif()
if(QUORVEL_HAS_RELRO)
    add_link_options($<$<CONFIG:Release>:-Wl,-z,relro,-z,now>)
endif()
# libstdc++ checks indices and iterators; other libraries ignore it.
add_compile_definitions($<$<CONFIG:Release>:_GLIBCXX_ASSERTIONS>)
