# The fuzz targets of the toolkit. The icon parser needs no dictionary:
#   build/host-fuzz/bin/IconDirectory_fuzz NEW_CORPUS fuzz/corpus/icon
tellurvane_fuzz_target(IconDirectory LIBRARIES ui)
