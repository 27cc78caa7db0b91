# What every target of the build has in common.

option(TARNCOM32_TESTS "Build the tests" ON)
option(TARNCOM32_BENCHMARKS "Build the benchmarks" OFF)
option(TARNCOM32_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
set(TARNCOM32_TOGETHER tests CACHE STRING "What is compiled a folder at a time: nothing, tests or all")
set_property(CACHE TARNCOM32_TOGETHER PROPERTY STRINGS nothing tests all)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET default)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Release or RelWithDebInfo" FORCE)
endif()
# The everyday build is optimised as far as costs no time, and keeps its assertions and line numbers.
set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O1 -g1")
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")


# Paths in the output are relative to the source folder: the same objects whatever folder they are built in.
add_compile_options("-ffile-prefix-map=${CMAKE_SOURCE_DIR}=.")

if(TARNCOM32_SANITIZE)
  # Not optimised: that takes half as long to compile, and no faulty access is optimised away before it is looked at.
  set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O0 -g1")
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

find_program(TARNCOM32_CCACHE ccache)
if(TARNCOM32_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # Several checkouts share one cache.
  set(CMAKE_CXX_COMPILER_LAUNCHER
      "${CMAKE_COMMAND};-E;env;CCACHE_BASEDIR=${CMAKE_SOURCE_DIR};CCACHE_NOHASHDIR=1;${TARNCOM32_CCACHE}")
endif()
