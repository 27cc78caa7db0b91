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
  include(GoogleTest)
endif()

# tarncom32_add_test(<program> <source>... [LIBS <library>...])
#
# Natively each test case is one entry of ctest, "<folder>.<Suite>.<Test>", in a process of its own. Under Wine, where a
# process takes long to start, the program is one entry.
function(tarncom32_add_test program)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LIBS")
  add_executable(${program} ${arg_UNPARSED_ARGUMENTS})
  target_include_directories(${program} PRIVATE "${PROJECT_SOURCE_DIR}/src" "${PROJECT_SOURCE_DIR}/tests")
  target_link_libraries(${program} PRIVATE ${arg_LIBS} tarncom32_test_support tarncom32_warnings)
  if(CMAKE_CROSSCOMPILING)
    add_test(NAME ${program} COMMAND ${program})
    set_tests_properties(${program} PROPERTIES TIMEOUT 600)
  else()
    string(REGEX REPLACE "_test$" "" prefix ${program})
    gtest_discover_tests(${program} TEST_PREFIX "${prefix}." DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300)
  endif()
endfunction()
