# The program is built as layers, each a library over one folder of src/ with an
# include root of its own that holds that folder alone. A layer sees its own
# folder and those of the layers it declares (and theirs), so an include that
# points up a layer (`#include "ui/..."` in the foundation) fails to build.
#
# The include root of the layer in src/NAME is ${CMAKE_BINARY_DIR}/include/NAME,
# holding one symbolic link, NAME, to src/NAME: the sources stay where they are,
# and "NAME/File.h" is found only by the layers that may use it.

# glyphmoor_layer(NAME [SOURCES file ...] [DEPENDS layer ...]), called in
# src/NAME: the library glyphmoor_NAME over that folder. A layer without
# sources yet is an interface library, so the layers above can declare it.
function(glyphmoor_layer name)
  cmake_parse_arguments(PARSE_ARGV 1 layer "" "" "SOURCES;DEPENDS")
  set(root "${CMAKE_BINARY_DIR}/include/${name}")
  file(MAKE_DIRECTORY "${root}")
  if(NOT IS_SYMLINK "${root}/${name}")
    file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}" "${root}/${name}" SYMBOLIC)
  endif()

  set(target glyphmoor_${name})
  list(TRANSFORM layer_DEPENDS PREPEND glyphmoor_)
  if(layer_SOURCES)
    add_library(${target} STATIC ${layer_SOURCES})
    target_include_directories(${target} PUBLIC "${root}")
    target_link_libraries(${target} PUBLIC ${layer_DEPENDS})
    glyphmoor_warnings(${target})
  else()
    add_library(${target} INTERFACE)
    target_include_directories(${target} INTERFACE "${root}")
    target_link_libraries(${target} INTERFACE ${layer_DEPENDS})
  endif()
endfunction()
