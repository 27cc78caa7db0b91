# Each folder of src/ is one static library; together they make libtarncom32.

# tarncom32_together(<variable> <name> <folder> <source>...)
#
# Puts into the variable one file, made in the build folder, that includes all of the sources: they stand in the current
# source folder, which <folder> (src or tests) is above. Most of the time that a file takes goes into headers and
# templates that its neighbours need as well. It names no folder of this machine, so that checkouts share one compiler
# cache.
function(tarncom32_together variable name folder)
  cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY "${PROJECT_SOURCE_DIR}/${folder}" OUTPUT_VARIABLE below)
  set(text "")
  foreach(source IN LISTS ARGN)
    string(APPEND text "#include \"${below}/${source}\"\n")
  endforeach()
  set(file "${CMAKE_CURRENT_BINARY_DIR}/${name}_together.cpp")
  file(CONFIGURE OUTPUT "${file}" CONTENT "${text}" @ONLY)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # It takes the sources for headers, and what stands in their anonymous namespaces for a mistake.
    set_source_files_properties("${file}" PROPERTIES COMPILE_OPTIONS -Wno-subobject-linkage)
  endif()
  set(${variable} "${file}" PARENT_SCOPE)
endfunction()

# tarncom32_add_layer(<folder> <source>... [APART <source>...] [LIBS <library>...])
#
# Makes the library tarncom32_<folder>, compiled with the project's warnings, whose users include its headers as
# "<folder>/<header>". LIBS (other layers, libraries of the system) are passed on to its users. APART are sources
# that are always compiled by themselves: macros of the headers that they include rename what other sources declare.
function(tarncom32_add_layer folder)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "APART;LIBS")
  set(sources ${arg_UNPARSED_ARGUMENTS})
  if(TARNCOM32_TOGETHER STREQUAL "all")
    tarncom32_together(sources tarncom32_${folder} src ${sources})
  endif()
  add_library(tarncom32_${folder} STATIC ${sources} ${arg_APART})
  target_include_directories(tarncom32_${folder} PUBLIC "${PROJECT_SOURCE_DIR}/src")
  target_link_libraries(tarncom32_${folder} PRIVATE $<BUILD_INTERFACE:tarncom32_warnings>)
  target_link_libraries(tarncom32_${folder} PUBLIC ${arg_LIBS})
endfunction()

# tarncom32_aggregate_layers()
#
# Makes libtarncom32, static and shared, of the layers that there are, and likewise the stand-in's own library
# libtarnvisiostandin, which needs libtarncom32.
function(tarncom32_aggregate_layers)
  set(core "")
  foreach(layer IN LISTS TARNCOM32_LAYERS)
    if(TARGET tarncom32_${layer} AND NOT layer MATCHES "^(standin|idl|com|cli)$")
      list(APPEND core tarncom32_${layer})
    endif()
  endforeach()
  if(core AND NOT WIN32)
    tarncom32_aggregate(tarncom32 ${core})
    if(TARGET tarncom32_standin)
      tarncom32_aggregate(tarnvisiostandin tarncom32_standin tarncom32_drawing)
      target_link_libraries(tarnvisiostandin_shared PUBLIC tarncom32_shared)
      target_link_libraries(tarnvisiostandin_static PUBLIC tarncom32_static)
    endif()
  endif()
endfunction()

# tarncom32_aggregate(<name> <layer target>...): lib<name>.a and lib<name>.so of the layers' objects.
function(tarncom32_aggregate name)
  list(TRANSFORM ARGN REPLACE "(.+)" "$<TARGET_OBJECTS:\\1>" OUTPUT_VARIABLE objects)
  # What the layers need besides one another: the libraries of the system.
  set(system_libraries "")
  foreach(layer IN LISTS ARGN)
    get_target_property(libraries ${layer} LINK_LIBRARIES)
    list(FILTER libraries EXCLUDE REGEX "tarncom32_")
    list(APPEND system_libraries ${libraries})
  endforeach()
  list(REMOVE_DUPLICATES system_libraries)
  foreach(kind IN ITEMS STATIC SHARED)
    string(TOLOWER ${kind} suffix)
    set(target ${name}_${suffix})
    add_library(${target} ${kind} ${objects})
    set_target_properties(${target} PROPERTIES OUTPUT_NAME ${name} LINKER_LANGUAGE CXX VERSION ${PROJECT_VERSION}
                                               SOVERSION ${PROJECT_VERSION_MAJOR})
    target_link_libraries(${target} PRIVATE ${system_libraries})
  endforeach()
endfunction()
