# find_package(veltane [COMPONENTS shared | static])
#
# Gives the target veltane::filtermath: the shared library, or the archive where that is asked for
# or all there is. veltane::filtermath-shared and veltane::filtermath-static are always what they
# say. With the archive, the language CXX has to be enabled: it is linked by a C++ compiler.
include(${CMAKE_CURRENT_LIST_DIR}/veltane-interface.cmake)
foreach(kind shared static)
  include(${CMAKE_CURRENT_LIST_DIR}/veltane-${kind}.cmake OPTIONAL RESULT_VARIABLE found)
  set(veltane_${kind}_FOUND ${found})
endforeach()

set(veltane_kinds ${veltane_FIND_COMPONENTS})
if(NOT veltane_kinds)
  set(veltane_kinds shared static)
endif()
foreach(kind IN LISTS veltane_kinds)
  if(NOT TARGET veltane::filtermath AND TARGET veltane::filtermath-${kind})
    add_library(veltane::filtermath INTERFACE IMPORTED)
    target_link_libraries(veltane::filtermath INTERFACE veltane::filtermath-${kind})
  elseif(veltane_FIND_REQUIRED_${kind} AND NOT TARGET veltane::filtermath-${kind})
    set(veltane_FOUND FALSE)
    set(veltane_NOT_FOUND_MESSAGE "veltane has no component '${kind}' here")
  endif()
endforeach()
