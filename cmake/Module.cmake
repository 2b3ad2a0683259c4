# Each top folder of code is a module: one static library that names its dependencies.
#
#   tellurvane_module(scheduler
#     PORTABLE files without <windows.h>; built for the host and for Windows
#     WINDOWS  files that call the platform; built for Windows only
#     DEPENDS  the modules that it may include
#     SYSTEM   the platform's import libraries that it calls)
function(tellurvane_module name)
  cmake_parse_arguments(module "" "" "PORTABLE;WINDOWS;DEPENDS;SYSTEM" ${ARGN})
  set(sources ${module_PORTABLE})
  if(WIN32)
    list(APPEND sources ${module_WINDOWS})
  endif()
  if(sources)
    add_library(${name} STATIC ${sources})
    target_link_libraries(${name} PUBLIC tellurvane_compile ${module_DEPENDS})
    if(WIN32)
      target_link_libraries(${name} PUBLIC ${module_SYSTEM})
    endif()
  else()
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE tellurvane_compile ${module_DEPENDS})
  endif()
endfunction()
