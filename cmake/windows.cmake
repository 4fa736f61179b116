# The compiler's own libraries lie beside the programs, since no Windows has them.
foreach(library libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${library}
                  OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  file(COPY ${file} DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY} FOLLOW_SYMLINK_CHAIN)
  install(FILES ${file} DESTINATION bin)
endforeach()

# Files larger than 2 GiB have a size, and a place in them.
add_compile_definitions(_FILE_OFFSET_BITS=64)
