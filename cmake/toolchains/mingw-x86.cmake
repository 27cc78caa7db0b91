set(TARNCOM32_MINGW i686-w64-mingw32)
set(TARNCOM32_WINE x86)
# Every Windows that is still looked after needs SSE2. Floating point then gives the same results as on x64. Callers on
# 32-bit Windows align the stack to 4 bytes only: functions that need more see to it themselves.
set(CMAKE_C_FLAGS_INIT "-msse2 -mfpmath=sse -mpreferred-stack-boundary=2")
set(CMAKE_CXX_FLAGS_INIT "${CMAKE_C_FLAGS_INIT}")
include("${CMAKE_CURRENT_LIST_DIR}/mingw.cmake")
