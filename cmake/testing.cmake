# Tests are GoogleTest programs: one for each folder of tests/.

if(NOT TARNCOM32_TESTS)
  return()
endif()

if(CMAKE_CROSSCOMPILING)
  # There is no cross-built GoogleTest, so it is built from the sources that its Debian package brings.
  set(BUILD_GMOCK ON)
  set(INSTALL_GTEST OFF)
  add_subdirectory(/usr/src/googletest "${CMAKE_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)
  if(NOT TARGET GTest::gtest) # Newer sources define the aliases themselves.
    add_library(GTest::gtest ALIAS gtest)
    add_library(GTest::gmock ALIAS gmock)
  endif()
else()
  find_package(GTest REQUIRED)
endif()

# tarncom32_add_test(<program> <source>... [APART <source>...] [LIBS <library>...])
#
# The program is one entry of ctest: a process takes longer to start than most cases take to run. APART as for a layer.
function(tarncom32_add_test program)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "APART;LIBS")
  set(sources ${arg_UNPARSED_ARGUMENTS})
  if(NOT TARNCOM32_TOGETHER STREQUAL "nothing")
    tarncom32_together(sources ${program} tests ${sources})
  endif()
  add_executable(${program} ${sources} ${arg_APART})
  target_include_directories(${program} PRIVATE "${PROJECT_SOURCE_DIR}/src" "${PROJECT_SOURCE_DIR}/tests")
  target_link_libraries(${program} PRIVATE ${arg_LIBS} tarncom32_test_support tarncom32_warnings)
  add_test(NAME ${program} COMMAND ${program})
  set_tests_properties(${program} PROPERTIES TIMEOUT 600)
endfunction()
