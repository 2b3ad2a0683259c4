# A room is one folder of the house: one static library with its dependencies named.
#
#   tellurvane_room(scheduler
#     RULES    files without <windows.h>; built for the host and for Windows
#     WINDOWS  files that call the platform; built for Windows only
#     DEPENDS  the rooms it may know
#     SYSTEM   the platform's import libraries it calls)
function(tellurvane_room name)
  cmake_parse_arguments(room "" "" "RULES;WINDOWS;DEPENDS;SYSTEM" ${ARGN})
  set(sources ${room_RULES})
  if(WIN32)
    list(APPEND sources ${room_WINDOWS})
  endif()
  if(sources)
    add_library(${name} STATIC ${sources})
    target_link_libraries(${name} PUBLIC tellurvane_compile ${room_DEPENDS})
    if(WIN32)
      target_link_libraries(${name} PUBLIC ${room_SYSTEM})
    endif()
  else()
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE tellurvane_compile ${room_DEPENDS})
  endif()
endfunction()
