# The extension modules, for the minor version of CPython whose interpreter is found (Python_EXECUTABLE chooses).
set(PYBIND11_FINDPYTHON ON)
find_package(Python 3.10...<3.15 REQUIRED COMPONENTS Interpreter Development.Module)
if(NOT pybind11_DIR)
  execute_process(COMMAND ${Python_EXECUTABLE} -m pybind11 --cmakedir
                  OUTPUT_VARIABLE pybind11_DIR OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif()
find_package(pybind11 3 CONFIG REQUIRED)

pybind11_add_module(_native MODULE NO_EXTRAS ${binder_sources} ${module_sources})
target_link_libraries(_native PRIVATE vkm vkm_compile_options)
target_compile_definitions(_native PRIVATE VKM_VERSION="${PROJECT_VERSION}")

pybind11_add_module(_engine MODULE NO_EXTRAS ${engine_sources} src/module/border.cpp)
target_link_libraries(_engine PRIVATE vkm vkm_compile_options Threads::Threads)
include(cmake/development_package.cmake)

install(TARGETS _native LIBRARY DESTINATION .)
install(TARGETS _engine LIBRARY DESTINATION vkmcore)
