# The resource script of the program. A target that needs the icons and pictures adds it to its sources,
# and its folder calls tellurvane_use_resources().
set(TELLURVANE_RESOURCES ${PROJECT_SOURCE_DIR}/resources/Tellurvane.rc)

# Compiles the resource script in the calling folder. The resource compiler does not report the
# pictures that it reads, so they are named here.
macro(tellurvane_use_resources)
  file(GLOB pictures CONFIGURE_DEPENDS
    ${PROJECT_SOURCE_DIR}/resources/*.ico ${PROJECT_SOURCE_DIR}/resources/*.bmp)
  set_source_files_properties(${TELLURVANE_RESOURCES} PROPERTIES
    COMPILE_OPTIONS "-c;65001;-I${CMAKE_BINARY_DIR}/generated"
    OBJECT_DEPENDS "${pictures};${CMAKE_BINARY_DIR}/generated/Tellurvane.manifest")
endmacro()
