# Compiles the help file in the current folder: cmake -DCHMCMD=PROGRAM -DPROJECT=FILE.hhp -DOUTPUT=FILE.chm -P CompileHelp.cmake
# The compiler reads beside the project and writes into the current folder.
execute_process(COMMAND ${CHMCMD} ${PROJECT} RESULT_VARIABLE result OUTPUT_VARIABLE said ERROR_VARIABLE said)
# It succeeds even when a contents file or the page of a link is missing, and only reports it.
string(REGEX MATCHALL "[^\n]*(Error:|couldn't find it|does not exist)[^\n]*" faults "${said}")
if(NOT result EQUAL 0 OR faults)
  message("${said}")
  message(FATAL_ERROR "The help file cannot be compiled (${CHMCMD} ended with ${result}).")
endif()
get_filename_component(name ${OUTPUT} NAME)
file(COPY_FILE ${CMAKE_CURRENT_BINARY_DIR}/${name} ${OUTPUT})
