# The extension modules, for the minor version of CPython whose interpreter is found (Python_EXECUTABLE chooses).
set(PYBIND11_FINDPYTHON ON)
find_package(Python 3.10...<3.15 REQUIRED COMPONENTS Interpreter Development.Module)
if(NOT pybind11_DIR)
  execute_process(COMMAND ${Python_EXECUTABLE} -m pybind11 --cmakedir
                  OUTPUT_VARIABLE pybind11_DIR OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif()
find_package(pybind11 3 CONFIG REQUIRED)

# The second extension keeps its entry and all of its binders in one folder; all other binders are _native's.
file(GLOB module_sources CONFIGURE_DEPENDS src/module/*.cpp)
file(GLOB_RECURSE binder_sources CONFIGURE_DEPENDS src/bind_*.cpp)
list(FILTER binder_sources EXCLUDE REGEX "/src/engine/")
file(GLOB engine_sources CONFIGURE_DEPENDS src/engine/*.cpp)

# Most of a binder's compilation is pybind11 itself: its headers, and the code that every file makes of them anew. So
# the binders of a room are compiled some at a time, as one file that includes them. They hold no kernel: -O1 costs a
# call nothing and saves a third of the time.
set(VKM_BINDER_BATCH 6 CACHE STRING "Binder files compiled together; 1 for quick edits of one of them")
set(binder_batches)
list(SORT binder_sources)
foreach(file IN LISTS binder_sources)
  file(RELATIVE_PATH name ${PROJECT_SOURCE_DIR}/src ${file})
  string(REGEX REPLACE "/.*" "" room ${name})
  if(NOT room STREQUAL batch_room)
    set(batch_room ${room})
    set(in_room 0)
  endif()
  math(EXPR number "${in_room} / ${VKM_BINDER_BATCH}")
  math(EXPR in_room "${in_room} + 1")
  set(batch ${PROJECT_BINARY_DIR}/binders/${room}_${number}.cpp)
  list(APPEND binder_batches ${batch})
  string(APPEND "text_of_${room}_${number}" "#include \"${name}\"\n")
endforeach()
list(REMOVE_DUPLICATES binder_batches)
foreach(batch IN LISTS binder_batches)
  get_filename_component(name ${batch} NAME_WE)
  file(GENERATE OUTPUT ${batch} CONTENT "${text_of_${name}}")
endforeach()
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  set_source_files_properties(${binder_batches} PROPERTIES COMPILE_OPTIONS -O1)
endif()

# The module's own files come first: of pybind11's inline functions the linker keeps the copy of the first object, and
# these are compiled with full optimisation.
pybind11_add_module(_native MODULE NO_EXTRAS ${module_sources} ${binder_batches})
target_link_libraries(_native PRIVATE vkm vkm_compile_options)
target_compile_definitions(_native PRIVATE VKM_VERSION="${PROJECT_VERSION}")

pybind11_add_module(_engine MODULE NO_EXTRAS ${engine_sources} src/module/border.cpp src/module/casters.cpp)
target_link_libraries(_engine PRIVATE vkm vkm_compile_options Threads::Threads)
include(cmake/development_package.cmake)

# For a wheel: the run-time library of C++ comes with the module, unseen by other modules, and an old glibc is enough.
option(VKM_PORTABLE "Link the C++ run-time library into the extension modules (Linux on x86-64)" OFF)
if(VKM_PORTABLE)
  foreach(extension _native _engine)
    target_sources(${extension} PRIVATE src/portable/old_glibc.cpp)
    target_link_options(${extension} PRIVATE -static-libstdc++ -Wl,--exclude-libs,ALL -Wl,--no-as-needed
                        -l:libpthread.so.0 -Wl,--as-needed)
  endforeach()
endif()

install(TARGETS _native LIBRARY DESTINATION .)
install(TARGETS _engine LIBRARY DESTINATION vkmcore)
