# The package as a development build sees it: <build>/vkmcore with links to the entries of python/vkmcore, and the built
# _engine beside them. With the build folder on PYTHONPATH `import vkmcore` finds both; the links follow every edit, and
# configuring again (which the build does by itself) follows new and removed entries.
set(vkm_package ${PROJECT_BINARY_DIR}/vkmcore)
file(GLOB vkm_package_entries CONFIGURE_DEPENDS LIST_DIRECTORIES true RELATIVE ${PROJECT_SOURCE_DIR}/python/vkmcore
     ${PROJECT_SOURCE_DIR}/python/vkmcore/*)
list(REMOVE_ITEM vkm_package_entries __pycache__)
file(MAKE_DIRECTORY ${vkm_package})

file(GLOB vkm_linked_entries LIST_DIRECTORIES true RELATIVE ${vkm_package} ${vkm_package}/*)
foreach(entry IN LISTS vkm_linked_entries)
  if(IS_SYMLINK ${vkm_package}/${entry} AND NOT entry IN_LIST vkm_package_entries)
    file(REMOVE ${vkm_package}/${entry})
  endif()
endforeach()
foreach(entry IN LISTS vkm_package_entries)
  if(NOT IS_SYMLINK ${vkm_package}/${entry})
    file(CREATE_LINK ${PROJECT_SOURCE_DIR}/python/vkmcore/${entry} ${vkm_package}/${entry} SYMBOLIC)
  endif()
endforeach()

set_target_properties(_engine PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${vkm_package})
