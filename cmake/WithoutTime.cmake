# Clears the time of the build in a compiled help file or type library, so that two builds of the same sources are equal:
# cmake -DFILE=NAME.chm -P WithoutTime.cmake, or NAME.tlb
file(READ ${FILE} bytes HEX)

# Writes zeros over the bytes that follow what the expression matches.
function(clear_after expression count)
  if(NOT bytes MATCHES "${expression}")
    message(FATAL_ERROR "${FILE}: the time of the build is not where it is expected")
  endif()
  string(FIND "${bytes}" "${CMAKE_MATCH_0}" start)
  string(LENGTH "${CMAKE_MATCH_0}" length)
  math(EXPR offset "(${start} + ${length}) / 2")
  execute_process(COMMAND dd if=/dev/zero of=${FILE} bs=1 seek=${offset} count=${count} conv=notrunc status=none
    COMMAND_ERROR_IS_FATAL ANY)
endfunction()

if(FILE MATCHES "\\.chm$")
  string(REPEAT ".." 12 sizes)
  clear_after("^49545346${sizes}" 4)  # its head: "ITSF", three numbers, the time
  clear_after("030000000a000400" 4)  # the description of the help system begins with its version and the time
else()
  string(HEX "Created by WIDL version " creator)
  string(REPEAT ".." 24 date)
  clear_after("${creator}(3.|2e)+20617420" 24)  # the version, " at ", and a date as text
  clear_after("${creator}(3.|2e)+20617420${date}0a(57)*1300" 4)  # padding, and the same as a number
endif()
