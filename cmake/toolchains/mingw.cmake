# Cross-building for Windows; TARNCOM32_MINGW is the triplet, TARNCOM32_WINE the name scripts/wine knows it by.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR ${TARNCOM32_MINGW})

# The variant with POSIX threads: std::thread and std::mutex exist only there. GoogleTest's project wants C as well.
set(CMAKE_C_COMPILER ${TARNCOM32_MINGW}-gcc-posix)
set(CMAKE_CXX_COMPILER ${TARNCOM32_MINGW}-g++-posix)
set(CMAKE_RC_COMPILER ${TARNCOM32_MINGW}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${TARNCOM32_MINGW})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Nothing but Windows' own DLLs is needed at run time.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-static")

cmake_path(SET mingw_root NORMALIZE "${CMAKE_CURRENT_LIST_DIR}/../..")
set(CMAKE_CROSSCOMPILING_EMULATOR "${mingw_root}/scripts/wine;${TARNCOM32_WINE}")
