# The tests of the package reader.

set(TARNCOM32_DRAWINGS "" CACHE PATH "A folder with drawings from elsewhere that the tests read too, if there is one")
set(drawings "")
if(IS_DIRECTORY "${TARNCOM32_DRAWINGS}")
  set(drawings "${TARNCOM32_DRAWINGS}")
endif()

tarncom32_add_test(drawing_test drawing_count_test.cpp drawing_hostile_test.cpp drawing_package.cpp
                   drawing_reader_test.cpp LIBS tarncom32_drawing)
set_source_files_properties(drawing_count_test.cpp PROPERTIES COMPILE_DEFINITIONS "TARNCOM32_DRAWINGS=\"${drawings}\"")

# The example is what its program draws, byte for byte.
find_package(Python3 COMPONENTS Interpreter)
if(Python3_Interpreter_FOUND)
  add_test(NAME drawing.example_is_as_drawn
           COMMAND sh -c "\"$0\" \"$1\" example.vsdx && cmp example.vsdx \"$2\"" "${Python3_EXECUTABLE}"
                   "${PROJECT_SOURCE_DIR}/examples/make_drawing"
                   "${PROJECT_SOURCE_DIR}/examples/drawings/office-network.vsdx"
           WORKING_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}")
endif()
