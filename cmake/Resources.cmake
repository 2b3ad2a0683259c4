# The resource script of the program. A target that needs the icons and pictures adds it to its sources,
# and its folder calls tellurvane_use_resources().
set(TELLURVANE_RESOURCES ${PROJECT_SOURCE_DIR}/resources/Tellurvane.rc)

# False for programs that Windows scales itself on a dense screen.
set(TELLURVANE_DPI_AWARE true)

# Makes the manifest of the calling folder.
macro(tellurvane_make_manifest)
  configure_file(${PROJECT_SOURCE_DIR}/resources/Tellurvane.manifest.in
    ${CMAKE_CURRENT_BINARY_DIR}/Tellurvane.manifest)
endmacro()

# Compiles the resource script in the calling folder. The resource compiler does not report the
# pictures that it reads, so they are named here.
macro(tellurvane_use_resources)
  tellurvane_make_manifest()
  file(GLOB pictures CONFIGURE_DEPENDS
    ${PROJECT_SOURCE_DIR}/resources/*.ico ${PROJECT_SOURCE_DIR}/resources/*.bmp)
  set_source_files_properties(${TELLURVANE_RESOURCES} PROPERTIES
    COMPILE_OPTIONS "-c;65001;-I${CMAKE_CURRENT_BINARY_DIR};-I${CMAKE_BINARY_DIR}/generated"
    OBJECT_DEPENDS "${pictures};${CMAKE_CURRENT_BINARY_DIR}/Tellurvane.manifest")
endmacro()
