option(VARNEL4_BUILD_TESTS "Build the test suite" ON)
option(VARNEL4_BUILD_BENCHMARKS "Build the benchmarks" ON)
set(VARNEL4_SANITIZE "" CACHE STRING "Sanitizers to build with: empty, 'address,undefined' or 'thread'")

# Our own code: warnings on, no FMA contraction anywhere (it changes DSP results).
add_compile_options(-Wall -Wextra -ffp-contract=off)
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  # Some classes keep described fields that no operation reads.
  add_compile_options(-Wno-unused-private-field)
endif()

if(VARNEL4_SANITIZE)
  # g++ 12 misreads Boost.Signals2's optional group keys as maybe uninitialised under the
  # sanitizers' instrumentation.
  add_compile_options(-fsanitize=${VARNEL4_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=undefined,float-cast-overflow
                      -Wno-maybe-uninitialized)
  add_link_options(-fsanitize=${VARNEL4_SANITIZE})
  # Not part of "undefined" in g++: a float converted to an integer it does not fit.
  if(VARNEL4_SANITIZE MATCHES undefined)
    add_compile_options(-fsanitize=float-cast-overflow)
    add_link_options(-fsanitize=float-cast-overflow)
  endif()
endif()
