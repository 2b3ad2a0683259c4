if(NOT EXISTS "${TARGET}")
  configure_file("${SOURCE}" "${TARGET}" COPYONLY)
endif()
