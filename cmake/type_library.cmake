# Type libraries for the Windows build. Their descriptions come from the member tables, written by programs of this
# project that run on the machine that builds: those of the preset `native`, in whose folder they are built.

find_program(TARNCOM32_WIDL NAMES ${TARNCOM32_MINGW}-widl widl REQUIRED)
find_path(TARNCOM32_WINE_IDL oaidl.idl PATHS /usr/include/wine/wine/windows NO_CMAKE_FIND_ROOT_PATH REQUIRED)
file(GLOB wine_folders "/usr/lib/*/wine/x86_64-windows")
find_path(TARNCOM32_WINE_DLLS stdole2.tlb PATHS ${wine_folders} NO_CMAKE_FIND_ROOT_PATH REQUIRED)

# The lock is that of the scripts: two builds for Windows may run at once.
set(TARNCOM32_HOST_FOLDER "${PROJECT_SOURCE_DIR}/build/native" CACHE INTERNAL "The folder of the preset `native`")
set(with_native flock "${PROJECT_SOURCE_DIR}/build/native.lock")
if(NOT EXISTS "${TARNCOM32_HOST_FOLDER}/build.ninja")
  file(MAKE_DIRECTORY "${PROJECT_SOURCE_DIR}/build")
  execute_process(COMMAND ${with_native} "${CMAKE_COMMAND}" --preset native WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}"
                  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endif()
add_custom_target(
  tarncom32_host_programs
  COMMAND ${with_native} "${CMAKE_COMMAND}" --build "${TARNCOM32_HOST_FOLDER}" --target tarncom32_type_library_programs
  BYPRODUCTS "${TARNCOM32_HOST_FOLDER}/bin/tarncom32_library_idl" "${TARNCOM32_HOST_FOLDER}/bin/tarncom32_standin_idl"
             "${TARNCOM32_HOST_FOLDER}/bin/tarncom32_probe_idl"
             "${TARNCOM32_HOST_FOLDER}/bin/tarncom32_finish_type_library"
  USES_TERMINAL
  VERBATIM)

# tarncom32_type_library(<name> <program>): makes <name>.tlb in the current binary folder, out of what the program
# writes, one that `tarncom32_add_idl_program` of src/idl has made.
function(tarncom32_type_library name program)
  set(idl "${CMAKE_CURRENT_BINARY_DIR}/${name}.idl")
  set(tlb "${CMAKE_CURRENT_BINARY_DIR}/${name}.tlb")
  set(programs "${TARNCOM32_HOST_FOLDER}/bin")
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
