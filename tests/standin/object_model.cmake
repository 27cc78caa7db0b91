# The tests of the object model, called as add-ins call it: late bound, by member name.
tarncom32_add_test(
  object_model_test
  drawing_package.cpp
  object_model.cpp
  object_model_cells_test.cpp
  object_model_documents_test.cpp
  object_model_drawings_test.cpp
  object_model_masters_test.cpp
  object_model_shapes_test.cpp
  LIBS
  tarncom32_standin
  tarncom32_drawing)
set_source_files_properties(object_model_drawings_test.cpp PROPERTIES COMPILE_DEFINITIONS
                            "TARNCOM32_DRAWINGS=\"${drawings}\"")
