# How every target of the project is built: language level, warnings, sanitizers, and the short forms
# qlm_library, qlm_program, qlm_test, qlm_bench and qlm_fuzzer.
include_guard(GLOBAL)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)

add_library(qlm_options INTERFACE)
target_include_directories(qlm_options INTERFACE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR})
# -ffp-contract=off: sums are rounded statement by statement, on every machine alike.
target_compile_options(qlm_options INTERFACE -Wall -Wextra -Wpedantic -Werror -ffp-contract=off)
# A mistake of ours that a strange file brings out must end the program, and not run what the file says: programs that
# can be loaded anywhere, tables of calls that cannot be written to, guarded stacks, checked indices and copies.
target_compile_definitions(qlm_options INTERFACE _GLIBCXX_ASSERTIONS)
target_compile_options(qlm_options INTERFACE -fPIE -fstack-protector-strong)
target_link_options(qlm_options INTERFACE -pie -Wl,-z,relro,-z,now)
if(QLM_SANITIZE)
  target_compile_options(qlm_options INTERFACE -fsanitize=${QLM_SANITIZE} -fno-sanitize-recover=all
                                               -fno-omit-frame-pointer)
  target_link_options(qlm_options INTERFACE -fsanitize=${QLM_SANITIZE})
else()
  # Where the sanitizers watch the copies themselves it would hide them, and it needs an optimised build.
  target_compile_options(qlm_options INTERFACE $<$<CONFIG:Release>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>)
endif()

# qlm_library(NAME SOURCES file... [USES target...] [PRIVATE_USES target...])
# One floor, or a part of one. USES are the floors below that its headers or sources include.
function(qlm_library name)
  cmake_parse_arguments(arg "" "" "SOURCES;USES;PRIVATE_USES" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC qlm_options ${arg_USES} PRIVATE ${arg_PRIVATE_USES})
endfunction()

# qlm_program(NAME SOURCES file... USES target...)
function(qlm_program name)
  cmake_parse_arguments(arg "" "" "SOURCES;USES" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE qlm_options ${arg_USES})
endfunction()

# qlm_test(NAME SOURCES file... USES target... [SERIAL])
# A GoogleTest program; each of its tests becomes one test of ctest.
function(qlm_test name)
  cmake_parse_arguments(arg "SERIAL" "" "SOURCES;USES" ${ARGN})
  qlm_program(${name} SOURCES ${arg_SOURCES} USES ${arg_USES} test_support GTest::gtest)
  target_compile_definitions(${name} PRIVATE
    QLM_SOURCE_DIR="${PROJECT_SOURCE_DIR}" QLM_BINARY_DIR="${PROJECT_BINARY_DIR}")
  # The leak check looks at our code, not at what packages keep to the end of the process.
  set(properties TIMEOUT 300
    ENVIRONMENT LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/leaks.supp:print_suppressions=0)
  if(arg_SERIAL)
    list(APPEND properties RUN_SERIAL TRUE)
  endif()
  gtest_discover_tests(${name} TEST_PREFIX "${name}." DISCOVERY_TIMEOUT 120 PROPERTIES ${properties})
endfunction()

# qlm_bench(NAME SOURCES file... USES target...)
function(qlm_bench name)
  cmake_parse_arguments(arg "" "" "SOURCES;USES" ${ARGN})
  qlm_program(${name} SOURCES ${arg_SOURCES} USES ${arg_USES} bench_support benchmark::benchmark_main)
endfunction()

# qlm_fuzzer(NAME SOURCES file... USES target... CORPUS folder)
# A libFuzzer target, built with the target `fuzzers`; ctest runs it for QLM_FUZZ_SECONDS on its stored corpus.
set(QLM_FUZZ_SECONDS 10 CACHE STRING "How long ctest runs each fuzz target")
function(qlm_fuzzer name)
  cmake_parse_arguments(arg "" "CORPUS" "SOURCES;USES" ${ARGN})
  qlm_program(${name} SOURCES ${arg_SOURCES} USES ${arg_USES})
  add_dependencies(fuzzers ${name})
  target_compile_options(${name} PRIVATE -fsanitize=fuzzer)
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  # New finds go to the first folder, so that the stored corpus stays as it is.
  set(found ${CMAKE_CURRENT_BINARY_DIR}/${name}-found)
  file(MAKE_DIRECTORY ${found})
  add_test(NAME ${name} COMMAND ${name} -max_total_time=${QLM_FUZZ_SECONDS} -rss_limit_mb=4096 -timeout=20
           ${found} ${PROJECT_SOURCE_DIR}/fuzz/corpus/${arg_CORPUS})
  set_tests_properties(${name} PROPERTIES TIMEOUT 300)
endfunction()
