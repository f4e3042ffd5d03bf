# Gives a module its version resource: NAME is its file, DESCRIPTION what Explorer shows, TYPE its file type (VFT_... of
# winver.h). The version is the project's.
set(versionTemplate ${CMAKE_CURRENT_LIST_DIR}/Version.rc.in)
function(add_version_resource target name description type)
  set(FILE_NAME ${name})
  set(FILE_DESCRIPTION ${description})
  set(FILE_TYPE ${type})
  cmake_path(GET name STEM INTERNAL_NAME)
  configure_file(${versionTemplate} ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc @ONLY)
  target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
endfunction()
