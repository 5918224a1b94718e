option(VARNEL4_BUILD_TESTS "Build the test suite" ON)
option(VARNEL4_BUILD_BENCHMARKS "Build the benchmarks" ON)
set(VARNEL4_SANITIZE "" CACHE STRING "Sanitizers to build with: empty, 'address,undefined' or 'thread'")
option(VARNEL4_FUZZ "Build the libFuzzer binaries (clang only); everything is instrumented for them" OFF)

# Our own code: warnings on, no FMA contraction anywhere (it changes DSP results).
add_compile_options(-Wall -Wextra -ffp-contract=off)
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  # Some classes keep described fields that no operation reads.
  add_compile_options(-Wno-unused-private-field)
endif()

if(VARNEL4_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "VARNEL4_FUZZ needs clang (libFuzzer)")
  endif()
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

if(VARNEL4_SANITIZE)
  # g++ 12 misreads Boost.Signals2's optional group keys as maybe uninitialised under the
  # sanitizers' instrumentation.
  add_compile_options(-fsanitize=${VARNEL4_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=undefined,float-cast-overflow)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-Wno-maybe-uninitialized)
  endif()
  add_link_options(-fsanitize=${VARNEL4_SANITIZE})
  # Not part of "undefined" in g++: a float converted to an integer it does not fit.
  if(VARNEL4_SANITIZE MATCHES undefined)
    add_compile_options(-fsanitize=float-cast-overflow)
    add_link_options(-fsanitize=float-cast-overflow)
  endif()
endif()

# Libraries are linked with every symbol resolved, except where clang's sanitizer runtimes come
# from the program that loads them.
set(VARNEL4_NO_UNDEFINED -Wl,--no-undefined)
if(VARNEL4_SANITIZE AND CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  set(VARNEL4_NO_UNDEFINED "")
endif()
