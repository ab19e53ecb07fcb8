# The targets Quorvel::core and Quorvel::utility; the second brings the first.
include(CMakeFindDependencyMacro)
find_dependency(Iconv)
include(${CMAKE_CURRENT_LIST_DIR}/QuorvelTargets.cmake)
