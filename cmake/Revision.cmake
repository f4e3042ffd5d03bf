# The header cli/Revision.h in BXVBWIZ_REVISION_FOLDER, made by the target revision: which commit a program was built from.
# As a script (cmake -DOUTPUT=FILE -DSOURCE=FOLDER -P Revision.cmake) it writes the header when its text has changed.
if(NOT CMAKE_SCRIPT_MODE_FILE)
  set(BXVBWIZ_REVISION_FOLDER ${PROJECT_BINARY_DIR}/revision)
  # At once, too, for programs that read the sources without building them.
  execute_process(COMMAND ${CMAKE_COMMAND} -DOUTPUT=${BXVBWIZ_REVISION_FOLDER}/cli/Revision.h
    -DSOURCE=${PROJECT_SOURCE_DIR} -P ${CMAKE_CURRENT_LIST_FILE})
  add_custom_target(revision
    COMMAND ${CMAKE_COMMAND} -DOUTPUT=${BXVBWIZ_REVISION_FOLDER}/cli/Revision.h -DSOURCE=${PROJECT_SOURCE_DIR}
      -P ${CMAKE_CURRENT_LIST_FILE}
    BYPRODUCTS ${BXVBWIZ_REVISION_FOLDER}/cli/Revision.h)
  return()
endif()

# Sources without their history, as in an archive, have no revision.
set(revision "")
find_program(GIT git)
if(GIT AND EXISTS ${SOURCE}/.git)
  execute_process(COMMAND ${GIT} -C ${SOURCE} describe --always --dirty --exclude=* --abbrev=10
    OUTPUT_VARIABLE revision OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif()
file(CONFIGURE OUTPUT ${OUTPUT} CONTENT "#define BXVBWIZ_REVISION \"${revision}\"\n")
