# Every PostScript page of FOLDER has to pass through GHOSTSCRIPT without an error.
file(GLOB pages ${FOLDER}/*.ps)
if(NOT pages)
  message(FATAL_ERROR "there are no pages in ${FOLDER}")
endif()
foreach(page IN LISTS pages)
  execute_process(COMMAND ${GHOSTSCRIPT} -q -dSAFER -dBATCH -dNOPAUSE -sDEVICE=nullpage ${page}
    RESULT_VARIABLE status OUTPUT_VARIABLE text ERROR_VARIABLE text)
  if(NOT status EQUAL 0 OR NOT text STREQUAL "")
    message(FATAL_ERROR "${page} is not read without an error:\n${text}")
  endif()
  message(STATUS "read ${page}")
endforeach()
