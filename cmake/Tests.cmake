# How tests are declared. Each folder of tests/ has a CMakeLists.txt that uses these functions.

# Real clicks and keys go through an X server and a window manager. On a busy machine these sometimes
# send one to another window, so a test that makes input is run again when it fails. A test without
# input is never run again.
set(TELLURVANE_INPUT_RETRIES --reruns 3)
find_program(TELLURVANE_PYTHON NAMES python3 PATHS /usr/bin NO_DEFAULT_PATH REQUIRED)

# tellurvane_kit(TARGET ...) puts programs into the kit, which runs the tests on Windows.
function(tellurvane_kit)
  set_property(GLOBAL APPEND PROPERTY TELLURVANE_KIT ${ARGN})
endfunction()

# The manifest for a test program without resources. Windows has other common controls for a program
# without one.
function(tellurvane_manifest target)
  tellurvane_make_manifest()
  set(script ${PROJECT_SOURCE_DIR}/tests/support/Manifest.rc)
  target_sources(${target} PRIVATE ${script})
  set_source_files_properties(${script} PROPERTIES
    COMPILE_OPTIONS "-I${CMAKE_CURRENT_BINARY_DIR}"
    OBJECT_DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/Tellurvane.manifest)
endfunction()

# tellurvane_run_under_wine(NAME TARGET [LOCALE ...] [TIMEOUT ...]) runs a test program once.
function(tellurvane_run_under_wine name target)
  cmake_parse_arguments(run "" "LOCALE;TIMEOUT" "" ${ARGN})
  tellurvane_kit(${target})
  add_test(NAME ${name}
    COMMAND ${PROJECT_SOURCE_DIR}/scripts/with-desktop --prefix unit --locale ${run_LOCALE}
      ${PROJECT_SOURCE_DIR}/tests/under-wine $<TARGET_FILE:${target}>)
  set_tests_properties(${name} PROPERTIES
    TIMEOUT ${run_TIMEOUT} RESOURCE_LOCK unit-${run_LOCALE} COST ${TELLURVANE_COST_unit})
endfunction()

# The tests of these modules run under en_US too: dates, numbers, the code page, fonts, pickers.
set(TELLURVANE_LOCALE_MODULES app base cmd scheduler ui)

# ctest starts the tests of the highest cost first. Tests of one Wine prefix wait for each other, so the
# tests of the prefix that takes longest begin, and something else runs beside them.
set(TELLURVANE_COST_program 100)
set(TELLURVANE_COST_unit 50)
set(TELLURVANE_COST_fakeplayer 20)

# tellurvane_tests(scheduler PORTABLE ... WINDOWS ... LIBRARIES ...)
# On the host each case is a test of its own. Under Wine, where a process takes longer to start, each
# module is one test.
function(tellurvane_tests module)
  cmake_parse_arguments(tests "" "" "PORTABLE;WINDOWS;LIBRARIES" ${ARGN})
  set(sources ${tests_PORTABLE})
  if(WIN32)
    list(APPEND sources ${tests_WINDOWS})
    list(APPEND tests_LIBRARIES failing_calls)
  endif()
  if(NOT sources)
    return()
  endif()
  set(target ${module}_tests)
  add_executable(${target} ${sources})
  target_link_libraries(${target} PRIVATE
    ${module} ${tests_LIBRARIES} test_support tellurvane_compile GTest::gmock_main)
  if(WIN32)
    set(locales zh_TW)
    if(module IN_LIST TELLURVANE_LOCALE_MODULES)
      list(APPEND locales en_US)
    endif()
    foreach(locale ${locales})
      tellurvane_run_under_wine(${module}.${locale} ${target} LOCALE ${locale} TIMEOUT 1500)
    endforeach()
  else()
    gtest_discover_tests(${target} TEST_PREFIX ${module}. DISCOVERY_TIMEOUT 60)
  endif()
endfunction()

# Runs a file or folder of Python tests on a screen and a Wine prefix of their own.
function(tellurvane_python_test name path)
  cmake_parse_arguments(tests "WITHOUT_INPUT" "PREFIX;LOCALE;DPI;TIMEOUT" "" ${ARGN})
  set(retries ${TELLURVANE_INPUT_RETRIES})
  if(tests_WITHOUT_INPUT)
    set(retries "")
  endif()
  add_test(NAME ${name}
    COMMAND ${PROJECT_SOURCE_DIR}/scripts/with-desktop
      --prefix ${tests_PREFIX} --locale ${tests_LOCALE} --dpi ${tests_DPI}
      ${TELLURVANE_PYTHON} -B -m pytest ${retries} ${path})
  set(cost 10)
  if(DEFINED TELLURVANE_COST_${tests_PREFIX})
    set(cost ${TELLURVANE_COST_${tests_PREFIX}})
  endif()
  set_tests_properties(${name} PROPERTIES COST ${cost}
    TIMEOUT ${tests_TIMEOUT} RESOURCE_LOCK ${tests_PREFIX}-${tests_LOCALE}
    ENVIRONMENT "TELLURVANE_BINARIES=${CMAKE_RUNTIME_OUTPUT_DIRECTORY};TELLURVANE_DPI=${tests_DPI}")
endfunction()

# The whole program as it is shipped: tellurvane_program_tests(life) runs test_life.py of the calling
# folder, under zh_TW or the named locales.
function(tellurvane_program_tests name)
  cmake_parse_arguments(tests "WITHOUT_INPUT" "PREFIX;DPI" "LOCALES" ${ARGN})
  set(input "")
  if(tests_WITHOUT_INPUT)
    set(input WITHOUT_INPUT)
  endif()
  if(NOT tests_PREFIX)
    set(tests_PREFIX program)
  endif()
  if(NOT tests_DPI)
    set(tests_DPI 96)
  endif()
  if(NOT tests_LOCALES)
    set(tests_LOCALES zh_TW)
  endif()
  foreach(locale ${tests_LOCALES})
    tellurvane_python_test(program.${name}.${locale} ${CMAKE_CURRENT_SOURCE_DIR}/test_${name}.py
      ${input} PREFIX ${tests_PREFIX} LOCALE ${locale} DPI ${tests_DPI} TIMEOUT 1200)
  endforeach()
endfunction()
