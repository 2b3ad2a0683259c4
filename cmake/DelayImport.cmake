# An import library whose DLL is loaded at the first call of one of its functions.
#   tellurvane_delay_import(gdiplus)  makes the target gdiplus_delayed from cmake/gdiplus.def
function(tellurvane_delay_import name)
  set(definition ${PROJECT_SOURCE_DIR}/cmake/${name}.def)
  set(library ${CMAKE_BINARY_DIR}/lib${name}_delayed.a)
  add_custom_command(OUTPUT ${library}
    COMMAND ${CMAKE_DLLTOOL} --input-def ${definition} --output-delaylib ${library}
    DEPENDS ${definition} VERBATIM)
  add_custom_target(${name}_delay_library DEPENDS ${library})
  add_library(${name}_delayed INTERFACE)
  add_dependencies(${name}_delayed ${name}_delay_library)
  target_link_libraries(${name}_delayed INTERFACE ${library} delayimp)
endfunction()
