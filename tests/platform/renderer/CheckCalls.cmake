# Whether the worker stands before the libraries that it loads: what it has in their place is of no use unexported.
execute_process(COMMAND ${NM} --dynamic --defined-only ${PROGRAM} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
foreach(call connect getaddrinfo memfd_create shmget shmat shmdt shmctl socketpair XShmAttach pa_context_new
    pa_stream_connect_playback pa_stream_get_time)
  if(NOT symbols MATCHES " T ${call}\n")
    message(FATAL_ERROR "libraries do not find ${call}() in ${PROGRAM}")
  endif()
endforeach()
