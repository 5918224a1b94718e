option(VARNEL4_BUILD_TESTS "Build the test suite" ON)
option(VARNEL4_BUILD_BENCHMARKS "Build the benchmarks" ON)
set(VARNEL4_SANITIZE "" CACHE STRING "Sanitizers to build with: empty, 'address,undefined' or 'thread'")

# Our own code: warnings on, no FMA contraction anywhere (it changes DSP results).
add_compile_options(-Wall -Wextra -ffp-contract=off)

if(VARNEL4_SANITIZE)
  add_compile_options(-fsanitize=${VARNEL4_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  add_link_options(-fsanitize=${VARNEL4_SANITIZE})
endif()
