# leave_out_unused_functions(): --gc-sections for Windows. The linker's own script keeps the table by which exceptions
# find their way (.pdata), and with it every function that has a line there, called or not: nearly all. Without that the
# table keeps empty lines of what is left out, which lie before all others and which no search of it ends at. What the
# lines point to (.xdata) stays as it is, for it names the types that are caught.
function(leave_out_unused_functions)
  set(script ${CMAKE_BINARY_DIR}/unused_functions.ld)
  execute_process(COMMAND ${CMAKE_LINKER} --verbose OUTPUT_VARIABLE usual COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX REPLACE "^.*\n====+\n(.*)\n====+\n.*$" "\\1" usual "${usual}")
  string(REPLACE "KEEP(*(.pdata*))" "*(.pdata*)" script_text "${usual}")
  if(script_text STREQUAL usual)
    message(FATAL_ERROR "${CMAKE_LINKER} does not keep .pdata as it used to")
  endif()
  file(CONFIGURE OUTPUT ${script} CONTENT "@script_text@" @ONLY)
  add_link_options(-Wl,--gc-sections -Wl,-T,${script})
endfunction()
