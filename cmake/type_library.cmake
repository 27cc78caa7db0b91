# Type libraries for the Windows build. Their descriptions come from the member tables, written by programs of this
# project that run on the machine that builds: they are built in a folder of their own with the native compiler.

include(ExternalProject)

find_program(TARNCOM32_WIDL NAMES ${TARNCOM32_MINGW}-widl widl REQUIRED)
find_path(TARNCOM32_WINE_IDL oaidl.idl PATHS /usr/include/wine/wine/windows NO_CMAKE_FIND_ROOT_PATH REQUIRED)
file(GLOB wine_folders "/usr/lib/*/wine/x86_64-windows")
find_path(TARNCOM32_WINE_DLLS stdole2.tlb PATHS ${wine_folders} NO_CMAKE_FIND_ROOT_PATH REQUIRED)

set(TARNCOM32_HOST_FOLDER "${CMAKE_BINARY_DIR}/host")
ExternalProject_Add(
  tarncom32_host_programs
  SOURCE_DIR "${PROJECT_SOURCE_DIR}"
  BINARY_DIR "${TARNCOM32_HOST_FOLDER}"
  CMAKE_GENERATOR Ninja
  CMAKE_ARGS -DCMAKE_CXX_COMPILER=g++ -DTARNCOM32_TESTS=OFF -DCMAKE_BUILD_TYPE=RelWithDebInfo
  BUILD_COMMAND ${CMAKE_COMMAND} --build "${TARNCOM32_HOST_FOLDER}" --target tarncom32_type_library_programs
  BUILD_ALWAYS ON
  INSTALL_COMMAND ""
  USES_TERMINAL_BUILD ON
  BUILD_BYPRODUCTS "${TARNCOM32_HOST_FOLDER}/src/idl/tarncom32_library_idl"
                   "${TARNCOM32_HOST_FOLDER}/src/idl/tarncom32_standin_idl"
                   "${TARNCOM32_HOST_FOLDER}/src/idl/tarncom32_finish_type_library")

# tarncom32_type_library(<name> <program>): makes <name>.tlb in the current binary folder, out of what the program of
# src/idl writes.
function(tarncom32_type_library name program)
  set(idl "${CMAKE_CURRENT_BINARY_DIR}/${name}.idl")
  set(tlb "${CMAKE_CURRENT_BINARY_DIR}/${name}.tlb")
  set(programs "${TARNCOM32_HOST_FOLDER}/src/idl")
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    set(bits --win64)
  else()
    set(bits --win32)
  endif()
  add_custom_command(
    OUTPUT "${tlb}" "${idl}"
    COMMAND "${programs}/${program}" "${idl}"
    COMMAND "${TARNCOM32_WIDL}" ${bits} -I "${TARNCOM32_WINE_IDL}" -L "${TARNCOM32_WINE_DLLS}" -t -o "${tlb}" "${idl}"
    COMMAND "${programs}/tarncom32_finish_type_library" "${tlb}"
    DEPENDS "${programs}/${program}" "${programs}/tarncom32_finish_type_library"
    VERBATIM)
endfunction()
