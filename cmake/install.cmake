# What `cmake --install` puts where: the libraries, the headers below include/tarncom32, the program, and for
# pkg-config one file a library and kind.

if(WIN32 OR NOT TARGET tarncom32_static)
  return()
endif()
include(GNUInstallDirs)

install(
  DIRECTORY src/
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tarncom32
  FILES_MATCHING
  PATTERN "*.h"
  PATTERN "*.inc"
  PATTERN "src/cli" EXCLUDE
  PATTERN "src/com" EXCLUDE
  PATTERN "src/idl" EXCLUDE
  PATTERN "automation/vtable.h" EXCLUDE
  PATTERN "platform/windows" EXCLUDE)

# tarncom32_install(<library> <description> [<library needed>]): both kinds of a library and their pkg-config files.
function(tarncom32_install name description)
  install(TARGETS ${name}_static ${name}_shared ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
          LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})

  # What the static library needs of the system, by its name in pkg-config. Other libraries' files are complete.
  set(known SQLite::SQLite3 sqlite3 LibXml2::LibXml2 libxml-2.0 PkgConfig::libzip libzip)
  set(modules "")
  set(flags "")
  get_target_property(libraries ${name}_static LINK_LIBRARIES)
  if(NOT libraries)
    set(libraries "")
  endif()
  foreach(library IN LISTS libraries)
    list(FIND known "${library}" position)
    if(position GREATER_EQUAL 0)
      math(EXPR position "${position} + 1")
      list(GET known ${position} module)
      string(APPEND modules " ${module}")
    elseif(library STREQUAL "Threads::Threads")
      string(APPEND flags " -pthread")
    elseif(NOT library MATCHES "^tarncom32_")
      message(FATAL_ERROR "cmake/install.cmake does not know the name of ${library} in pkg-config")
    endif()
  endforeach()

  # Relative to where the file lies, so that an installation can be moved.
  string(REGEX REPLACE "[^/]+" ".." up "${CMAKE_INSTALL_LIBDIR}")
  set(PC_PREFIX "\${pcfiledir}/../${up}")
  set(needed "${ARGN}")
  set(folder "${CMAKE_CURRENT_BINARY_DIR}/pkgconfig")
  foreach(kind IN ITEMS "" "-static")
    set(PC_NAME "${name}${kind}")
    set(PC_DESCRIPTION "${description}")
    set(PC_REQUIRES "")
    if(needed)
      set(PC_REQUIRES "${needed}${kind}")
    endif()
    if(kind)
      set(PC_DESCRIPTION "${description}, linked statically")
      string(APPEND PC_REQUIRES "${modules}")
      set(PC_LIBS "\${libdir}/lib${name}.a${flags}")
    else()
      set(PC_LIBS "-L\${libdir} -l${name}")
    endif()
    configure_file("${PROJECT_SOURCE_DIR}/packaging/library.pc.in" "${folder}/${PC_NAME}.pc" @ONLY)
    install(FILES "${folder}/${PC_NAME}.pc" DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
  endforeach()
endfunction()

tarncom32_install(tarncom32 "Component library for Visio add-ins")
if(TARGET tarnvisiostandin_static)
  tarncom32_install(tarnvisiostandin "A stand-in for Visio, to run add-ins without it" tarncom32)
endif()
if(TARGET tarn)
  install(TARGETS tarn DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
install(FILES README.md LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})

# Not with the sanitizers, whose libraries would have to be loaded into the client as well.
if(TARNCOM32_TESTS AND TARGET tarncom32_library AND NOT TARNCOM32_SANITIZE)
  # Clients need not be compiled by the compiler that the libraries are.
  find_program(TARNCOM32_CLANG clang++ REQUIRED)
  add_test(NAME install.a_client_builds_and_runs
           COMMAND bash "${PROJECT_SOURCE_DIR}/tests/install_test.sh" "${CMAKE_BINARY_DIR}" "${CMAKE_COMMAND}"
                   "${CMAKE_CXX_COMPILER}" "${TARNCOM32_CLANG}")
endif()
