set(TARNCOM32_MINGW x86_64-w64-mingw32)
set(TARNCOM32_WINE x64)
include("${CMAKE_CURRENT_LIST_DIR}/mingw.cmake")
