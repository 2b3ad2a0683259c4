# The radio directories' rules, each compared with its literal twin:
#   build/host-fuzz/bin/StationParsers_fuzz -dict=fuzz/radio.dict NEW_CORPUS fuzz/corpus/radio
add_library(literal_rules STATIC
  ${PROJECT_SOURCE_DIR}/tests/radio/LiteralRules.cpp
  ${PROJECT_SOURCE_DIR}/tests/radio/RuleDifference.cpp)
target_link_libraries(literal_rules PUBLIC radio)
# Not sanitized: that would take most of the time.
set_source_files_properties(${PROJECT_SOURCE_DIR}/tests/radio/LiteralRules.cpp PROPERTIES
  COMPILE_OPTIONS "-fno-sanitize=all;-fno-sanitize-coverage=trace-pc-guard,inline-8bit-counters,pc-table,trace-cmp,indirect-calls")
tellurvane_fuzz_target(StationParsers LIBRARIES literal_rules radio)
# The rules of Radio Browser:
#   build/host-fuzz/bin/RadioBrowser_fuzz NEW_CORPUS fuzz/corpus/radio_browser
add_library(browser_rules STATIC ${PROJECT_SOURCE_DIR}/tests/radio/BrowserRules.cpp)
target_link_libraries(browser_rules PUBLIC radio)
tellurvane_fuzz_target(RadioBrowser LIBRARIES browser_rules)
