# Installs a build tree, and moves what was installed to MOVED.
file(REMOVE_RECURSE ${MOVED} ${MOVED}.before)
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${MOVED}.before
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(RENAME ${MOVED}.before ${MOVED})
