# The catalogue inside the library.
#
#   src/knot_fseries/knot.<key>.fseries   an entry of the knot table, by <key>
#   resources/<key>                       an entry of the ideal table, by its path
#   resources/<key>.polygon               the same as <key>.txt, packed: the build unpacks it
#
# A new file is a new entry with no other edit. The texts do not pass through the compiler: the assembler includes the
# files. Where it cannot (VKM_EMBED_AS_BYTES), they are written out as arrays of bytes.
#
# Run as a script (cmake -P) this file writes the table; included, it makes the rule for that and adds it to `vkm`.

if(NOT CMAKE_SCRIPT_MODE_FILE)
  if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang" AND NOT WIN32)
    option(VKM_EMBED_AS_BYTES "Embed the catalogue as arrays of bytes instead of an assembler include" OFF)
  else()
    option(VKM_EMBED_AS_BYTES "Embed the catalogue as arrays of bytes instead of an assembler include" ON)
  endif()

  file(GLOB vkm_knot_files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/knot_fseries/knot.*.fseries)
  file(GLOB_RECURSE vkm_ideal_files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/resources/*)
  list(FILTER vkm_ideal_files EXCLUDE REGEX "/\\.[^/]*$")  # what editors and file managers leave behind
  set(vkm_polygon_files ${vkm_ideal_files})
  list(FILTER vkm_polygon_files INCLUDE REGEX "\\.polygon$")
  list(FILTER vkm_ideal_files EXCLUDE REGEX "\\.polygon$")

  set(vkm_catalogue ${PROJECT_BINARY_DIR}/catalogue)
  add_executable(vkm_unpack_polygons ${PROJECT_SOURCE_DIR}/tools/unpack_polygons.cpp)
  target_link_libraries(vkm_unpack_polygons PRIVATE vkm_compile_options)
  set(vkm_unpack_list "")
  set(vkm_unpacked "")
  foreach(path IN LISTS vkm_polygon_files)
    file(RELATIVE_PATH key ${PROJECT_SOURCE_DIR}/resources ${path})
    string(REGEX REPLACE "\\.polygon$" ".txt" key ${key})
    list(APPEND vkm_unpacked ${vkm_catalogue}/unpacked/${key})
    string(APPEND vkm_unpack_list "${path}\n${vkm_catalogue}/unpacked/${key}\n")
  endforeach()
  file(GENERATE OUTPUT ${vkm_catalogue}/unpack_list.txt CONTENT "${vkm_unpack_list}")
  add_custom_command(
    OUTPUT ${vkm_catalogue}/unpacked.stamp
    COMMAND vkm_unpack_polygons ${vkm_catalogue}/unpack_list.txt
    COMMAND ${CMAKE_COMMAND} -E touch ${vkm_catalogue}/unpacked.stamp
    DEPENDS ${vkm_polygon_files} ${vkm_catalogue}/unpack_list.txt vkm_unpack_polygons
    COMMENT "Unpacking the catalogue's polygons"
    VERBATIM)

  # The lists go through a file: a large catalogue does not fit a command line. It changes only with the set of files.
  file(GENERATE OUTPUT ${vkm_catalogue}/files.cmake CONTENT
    "set(source_dir [==[${PROJECT_SOURCE_DIR}]==])
set(as_bytes ${VKM_EMBED_AS_BYTES})
set(knot_files [==[${vkm_knot_files}]==])
set(ideal_files [==[${vkm_ideal_files}]==])
set(unpacked_dir [==[${vkm_catalogue}/unpacked]==])
set(unpacked_files [==[${vkm_unpacked}]==])
")
  add_custom_command(
    OUTPUT ${vkm_catalogue}/embedded_catalogue.cpp
    COMMAND ${CMAKE_COMMAND} -DLIST=${vkm_catalogue}/files.cmake -DOUTPUT=${vkm_catalogue}/embedded_catalogue.cpp
            -P ${CMAKE_CURRENT_LIST_FILE}
    DEPENDS ${vkm_knot_files} ${vkm_ideal_files} ${vkm_catalogue}/unpacked.stamp ${vkm_catalogue}/files.cmake
            ${CMAKE_CURRENT_LIST_FILE}
    COMMENT "Embedding the catalogue"
    VERBATIM)

  # The place of every block, found by a tool that shares the search's walk.
  set(vkm_index_list "")
  foreach(path IN LISTS vkm_ideal_files)
    file(RELATIVE_PATH key ${PROJECT_SOURCE_DIR}/resources ${path})
    string(APPEND vkm_index_list "${key}\n${path}\n")
  endforeach()
  file(GENERATE OUTPUT ${vkm_catalogue}/index_list.txt CONTENT "${vkm_index_list}")
  add_executable(vkm_index_catalogue ${PROJECT_SOURCE_DIR}/tools/index_catalogue.cpp)
  target_include_directories(vkm_index_catalogue PRIVATE ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(vkm_index_catalogue PRIVATE vkm_compile_options)
  add_custom_command(
    OUTPUT ${vkm_catalogue}/embedded_block_index.cpp
    COMMAND vkm_index_catalogue ${vkm_catalogue}/index_list.txt ${vkm_catalogue}/embedded_block_index.cpp
    DEPENDS ${vkm_ideal_files} ${vkm_catalogue}/index_list.txt vkm_index_catalogue
    COMMENT "Indexing the catalogue"
    VERBATIM)
  target_sources(vkm PRIVATE ${vkm_catalogue}/embedded_catalogue.cpp ${vkm_catalogue}/embedded_block_index.cpp)
  return()
endif()

cmake_minimum_required(VERSION 3.21)
include(${LIST})

# Appends the texts of a table to `texts`, and its sorted entries to `entries`. `paths` maps keys to files.
macro(embed_table name keys)
  set(sorted ${keys})
  list(SORT sorted COMPARE STRING CASE SENSITIVE)
  string(APPEND entries "constexpr EmbeddedText ${name}_table[] = {\n")
  set(number 0)
  foreach(key IN LISTS sorted)
    set(path "${path_of_${name}_${key}}")
    set(symbol "vkm_${name}_${number}")
    file(SIZE "${path}" size)
    if(as_bytes)
      file(READ "${path}" bytes HEX)
      string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${bytes}")
      string(APPEND texts "static constexpr char ${symbol}[] = {${bytes}'\\0'};\n")
    else()
      string(APPEND texts "VKM_TEXT(${symbol}, \"${path}\")\n")
    endif()
    string(APPEND entries "    {\"${key}\", {${symbol}, ${size}}},\n")
    math(EXPR number "${number} + 1")
  endforeach()
  string(APPEND entries "    {},\n};\n\n")  # an array must not be empty
  set(${name}_count ${number})
endmacro()

foreach(path IN LISTS knot_files)
  string(REGEX REPLACE "^.*/knot\\.(.*)\\.fseries$" "\\1" key "${path}")
  list(APPEND knot_keys "${key}")
  set("path_of_knot_${key}" "${path}")
endforeach()
foreach(path IN LISTS ideal_files)
  file(RELATIVE_PATH key "${source_dir}/resources" "${path}")
  list(APPEND ideal_keys "${key}")
  set("path_of_ideal_${key}" "${path}")
endforeach()
foreach(path IN LISTS unpacked_files)
  file(RELATIVE_PATH key "${unpacked_dir}" "${path}")
  list(APPEND ideal_keys "${key}")
  set("path_of_ideal_${key}" "${path}")
endforeach()
embed_table(knot "${knot_keys}")
embed_table(ideal "${ideal_keys}")

set(include_macro "")
if(NOT as_bytes)
  set(include_macro [==[
#if defined(__APPLE__)
#define VKM_SECTION ".section __TEXT,__const\n"
#define VKM_SECTION_END ".text\n"
#define VKM_SYMBOL(name) "_" #name
#define VKM_HIDDEN ".private_extern "
#else
#define VKM_SECTION ".pushsection .rodata.vkm_catalogue,\"a\"\n"
#define VKM_SECTION_END ".popsection\n"
#define VKM_SYMBOL(name) #name
#define VKM_HIDDEN ".hidden "
#endif
#define VKM_TEXT(name, path)                                                                              \
  __asm__(VKM_SECTION ".globl " VKM_SYMBOL(name) "\n" VKM_HIDDEN VKM_SYMBOL(name) "\n" VKM_SYMBOL(name)    \
          ":\n.incbin \"" path "\"\n.byte 0\n" VKM_SECTION_END);                                           \
  extern "C" __attribute__((visibility("hidden"))) const char name[];

]==])
endif()

file(WRITE "${OUTPUT}" "// Written by cmake/embed_catalogue.cmake; edits are lost.
#include \"knot/catalogue.hpp\"

namespace vkm {
${include_macro}
${texts}
namespace {

${entries}}  // namespace

std::span<const EmbeddedText> embedded_knot_files() { return {knot_table, ${knot_count}}; }

std::span<const EmbeddedText> embedded_ideal_files() { return {ideal_table, ${ideal_count}}; }

}  // namespace vkm
")
