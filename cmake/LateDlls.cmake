# late_dlls(TARGET NAMES...): the program that is linked with the target loads these libraries of Windows at the first
# call into them, and not before its first window is seen. Every one of them costs the start the search for a file, its
# mapping and that of what it needs in turn. check_late_dlls(PROGRAM NAMES...) stops the build of a program that asks for
# one of them at its start after all.
function(late_dlls target)
  # An import library that loads late is made of the functions of the usual one, under its name, and found first.
  set(folder ${CMAKE_BINARY_DIR}/late)
  file(MAKE_DIRECTORY ${folder})
  foreach(name IN LISTS ARGN)
    set(late ${folder}/lib${name}.a)
    if(EXISTS ${late})
      continue()
    endif()
    find_library(usual ${name} REQUIRED NO_CACHE)
    execute_process(COMMAND ${CMAKE_DLLTOOL} --identify ${usual}
      OUTPUT_VARIABLE dll OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    execute_process(COMMAND ${CMAKE_NM} ${usual} OUTPUT_VARIABLE symbols ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCHALL " T [A-Za-z0-9_]+" functions "${symbols}")
    list(TRANSFORM functions REPLACE " T " "")
    list(JOIN functions "\n" functions)
    file(WRITE ${folder}/${name}.def "LIBRARY ${dll}\nEXPORTS\n${functions}\n")
    execute_process(COMMAND ${CMAKE_DLLTOOL} --machine i386:x86-64 --input-def ${folder}/${name}.def --dllname ${dll}
      --output-delaylib ${late} --temp-prefix late_${name} WORKING_DIRECTORY ${folder} COMMAND_ERROR_IS_FATAL ANY)
    unset(usual)
  endforeach()
  target_link_directories(${target} BEFORE PUBLIC ${folder})
  target_link_libraries(${target} PUBLIC ${ARGN} delayimp)
endfunction()

function(check_late_dlls program)
  list(JOIN ARGN " " names)
  add_custom_command(TARGET ${program} POST_BUILD VERBATIM
    COMMAND ${CMAKE_COMMAND} -DPROGRAM=$<TARGET_FILE:${program}> -DOBJDUMP=${CMAKE_OBJDUMP} "-DLATE=${names}"
      -P ${PROJECT_SOURCE_DIR}/cmake/CheckLateDlls.cmake)
endfunction()
