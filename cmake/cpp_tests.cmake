# The tests of the library alone, in tests/cpp: each test_<concept>.cpp is a program and a test of CTest. They need no
# Python. `ctest --preset cpp` runs them after `cmake --preset cpp && cmake --build --preset cpp`.
enable_testing()
file(GLOB vkm_test_files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/cpp/test_*.cpp)
foreach(file IN LISTS vkm_test_files)
  get_filename_component(name ${file} NAME_WE)
  add_executable(${name} ${file})
  target_link_libraries(${name} PRIVATE vkm vkm_compile_options)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
  add_test(NAME ${name} COMMAND ${name})
endforeach()
