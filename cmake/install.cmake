# What `cmake --install` puts where. Everything is found relative to the program or the file that
# asks for it, so that an installation can be moved as a whole.
include(CMakePackageConfigHelpers)

# The command. Its library folder is its own, and the same in a build tree and on every system.
install(TARGETS veltane DESTINATION bin)
install(TARGETS veltane-module DESTINATION lib/veltane)
# Windows looks for a library beside the program, and calls what one links with an archive.
install(TARGETS patchbay LIBRARY DESTINATION lib/veltane RUNTIME DESTINATION bin
                         ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(FILES docs/veltane.1 DESTINATION share/man/man1)
if(TARGET completions)
  set(built ${PROJECT_BINARY_DIR}/cli/completion)
  install(FILES ${built}.bash DESTINATION share/bash-completion/completions RENAME veltane)
  install(FILES ${built}.zsh DESTINATION share/zsh/site-functions RENAME _veltane)
  install(FILES ${built}.fish DESTINATION share/fish/vendor_completions.d RENAME veltane.fish)
endif()
# Where script/page has built it.
install(FILES build/page/veltane.html DESTINATION share/veltane OPTIONAL)

# What there is to read.
install(FILES README.md CHANGELOG.md LICENSE THIRD-PARTY.md DESTINATION share/doc/veltane)
install(DIRECTORY docs DESTINATION share/doc/veltane
  FILES_MATCHING PATTERN "*.md" PATTERN "*.svg" PATTERN "*.png")
install(DIRECTORY examples DESTINATION share/doc/veltane USE_SOURCE_PERMISSIONS
  PATTERN CMakeLists.txt EXCLUDE)

# The mathematics.
install(DIRECTORY brontal/include/ filter-support/include/ DESTINATION include
  FILES_MATCHING PATTERN "*.h")
set(exports interface static)
install(TARGETS brontal EXPORT interface)
install(TARGETS filtermath runtime EXPORT static)
if(VELTANE_SHARED_FILTERMATH)
  list(APPEND exports shared)
  install(TARGETS filtermath-shared runtime-shared EXPORT shared)
endif()

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/veltane)
foreach(export IN LISTS exports)
  install(EXPORT ${export} NAMESPACE veltane:: FILE veltane-${export}.cmake
    DESTINATION ${package_folder})
endforeach()
write_basic_package_version_file(${PROJECT_BINARY_DIR}/veltane-config-version.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES cmake/veltane-config.cmake ${PROJECT_BINARY_DIR}/veltane-config-version.cmake
  DESTINATION ${package_folder})

cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}
  OUTPUT_VARIABLE library_folder)
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX
  BASE_DIRECTORY ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig OUTPUT_VARIABLE prefix_from_pkgconfig)
# What a C compiler has to be told to link the archive with.
set(standard_library stdc++)
if("c++" IN_LIST CMAKE_CXX_IMPLICIT_LINK_LIBRARIES)
  set(standard_library c++)
endif()
configure_file(cmake/filtermath.pc.in ${PROJECT_BINARY_DIR}/filtermath.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/filtermath.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
