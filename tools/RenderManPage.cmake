# Writes the tool's manual page: cmake -DTOOL=... -DOUTPUT=... -P RenderManPage.cmake
get_filename_component(_folder ${OUTPUT} DIRECTORY)
file(MAKE_DIRECTORY ${_folder})
execute_process(COMMAND ${TOOL} help --man OUTPUT_FILE ${OUTPUT} RESULT_VARIABLE _status)
if(NOT _status EQUAL 0)
  file(REMOVE ${OUTPUT})
  message(FATAL_ERROR "typeprobe help --man failed: ${_status}")
endif()
