set(TARNCOM32_MINGW i686-w64-mingw32)
set(TARNCOM32_WINE x86)
include("${CMAKE_CURRENT_LIST_DIR}/mingw.cmake")
