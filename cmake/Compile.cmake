# How everything of ours is compiled and linked.
add_library(tellurvane_compile INTERFACE)
target_compile_features(tellurvane_compile INTERFACE cxx_std_20)
target_include_directories(tellurvane_compile INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(tellurvane_compile INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror
  -fstack-protector-strong -ffunction-sections -fdata-sections)

if(WIN32)
  target_compile_definitions(tellurvane_compile INTERFACE
    UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN STRICT
    WINVER=0x0602 _WIN32_WINNT=0x0602)
  # One file that needs only the system's own DLLs. ASLR and NX are this linker's
  # default; they are named so that another default would not go unseen. Without
  # the time stamp two builds of one commit are the same file. Wine can map only
  # sections that begin at a page of the file, and reads others at each start.
  target_link_options(tellurvane_compile INTERFACE
    -static
    LINKER:--gc-sections LINKER:--dynamicbase LINKER:--nxcompat LINKER:--high-entropy-va
    LINKER:--no-insert-timestamp LINKER:--file-alignment=4096
    $<$<CONFIG:Release>:-s>)

  # For every program. Without it linking fails: the options above do not name the compiler's own
  # library.
  add_library(stack_guard STATIC ${PROJECT_SOURCE_DIR}/base/StackGuard.cpp)
  target_compile_features(stack_guard PRIVATE cxx_std_20)
  target_compile_options(stack_guard PRIVATE -Wall -Wextra -Werror)
  target_link_libraries(tellurvane_compile INTERFACE stack_guard)
endif()

if(TELLURVANE_SANITIZE)
  # Process-wide, so that the test framework is instrumented like our code.
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
    -fno-omit-frame-pointer -D_GLIBCXX_ASSERTIONS)
  add_link_options(-fsanitize=address,undefined)
  if(TELLURVANE_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
  endif()
endif()

if(TELLURVANE_COVERAGE)
  # By the source's own conditions: what the compiler adds for exceptions is not counted. What
  # clang warns of is no matter here.
  target_compile_options(tellurvane_compile INTERFACE
    -fprofile-instr-generate -fcoverage-mapping -Wno-error)
  target_link_options(tellurvane_compile INTERFACE -fprofile-instr-generate)
endif()
