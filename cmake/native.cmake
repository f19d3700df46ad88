# Native (Linux) targets: the core's tests and benchmarks.
find_package(GTest REQUIRED)

file(GLOB native_test_sources CONFIGURE_DEPENDS
  tests/util/*.cpp tests/engine/*.cpp tests/interaction/*.cpp)
add_executable(zelgraph_tests ${native_test_sources})
target_include_directories(zelgraph_tests PRIVATE tests)
target_link_libraries(zelgraph_tests PRIVATE zelgraph_core GTest::gtest GTest::gtest_main)

if(ZELGRAPH_BENCHMARKS)
  find_package(benchmark QUIET)
  file(GLOB bench_sources CONFIGURE_DEPENDS bench/*.cpp)
  if(benchmark_FOUND AND bench_sources)
    add_executable(zelgraph_bench ${bench_sources})
    target_link_libraries(zelgraph_bench PRIVATE zelgraph_core benchmark::benchmark)
  endif()
endif()
