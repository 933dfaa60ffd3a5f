# add_program_resources(TARGET FILE): compiles a resource script into a program, with the places where it finds headers,
# icons and the manifest, and anew when one of these has changed. The compiler does not tell what it has read, and a
# program with the manifest of yesterday behaves like the program of yesterday.
function(add_program_resources target file)
  target_sources(${target} PRIVATE ${file})
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/src/app ${PROJECT_SOURCE_DIR}/assets)
  set(inputs src/app/BrennvarGUI.rc src/app/BrennvarGUI.manifest src/config/ResourceIds.h src/ui/ToolkitIds.h assets/shield.ico
    assets/program.ico assets/art/menu_icons.png assets/tray/idle_normal.ico assets/tray/idle_allow.ico
    assets/tray/idle_block.ico assets/tray/traffic_in.ico assets/tray/traffic_out.ico assets/tray/traffic_both.ico)
  list(TRANSFORM inputs PREPEND ${PROJECT_SOURCE_DIR}/)
  set_source_files_properties(${file} TARGET_DIRECTORY ${target} PROPERTIES OBJECT_DEPENDS "${inputs}")
endfunction()
