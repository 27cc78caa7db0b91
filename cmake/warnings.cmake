# tarncom32_warnings: linked privately by everything this project compiles itself.

add_library(tarncom32_warnings INTERFACE)
target_compile_options(tarncom32_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
