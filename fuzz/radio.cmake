# The radio directories' rules, each against its literal twin:
#   build/host-fuzz/bin/RadioRules_fuzz -dict=fuzz/radio.dict NEW_CORPUS fuzz/corpus/radio
add_library(literal_rules STATIC ${PROJECT_SOURCE_DIR}/tests/radio/LiteralRules.cpp)
target_link_libraries(literal_rules PUBLIC radio)
tellurvane_fuzz_target(RadioRules LIBRARIES literal_rules radio)
