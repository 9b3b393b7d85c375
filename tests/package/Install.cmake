# Installs the build tree BUILD_TREE into an empty PREFIX.
file(REMOVE_RECURSE ${PREFIX})
set(arguments --install ${BUILD_TREE} --prefix ${PREFIX})
if(CONFIGURATION)
  list(APPEND arguments --config ${CONFIGURATION})
endif()
unset(ENV{DESTDIR})
execute_process(COMMAND ${CMAKE_COMMAND} ${arguments} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
