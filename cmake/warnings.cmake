# tarncom32_warnings: linked privately by everything this project compiles itself.

add_library(tarncom32_warnings INTERFACE)
target_compile_options(
  tarncom32_warnings
  INTERFACE "$<$<COMPILE_LANGUAGE:CXX>:-Wall;-Wextra;-Wpedantic;$<IF:$<CXX_COMPILER_ID:GNU>,-Wshadow=local,-Wshadow>;-Wconversion;-Werror>")
