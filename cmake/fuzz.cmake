# The libFuzzer targets of fuzz/, one program each, over the instrumented
# core. Run them as the README says; the test command runs each briefly from
# its seed corpus in fuzz/corpus/.
file(GLOB fuzz_sources CONFIGURE_DEPENDS fuzz/*_fuzzer.cpp)
foreach(source ${fuzz_sources})
  get_filename_component(name ${source} NAME_WE)
  add_executable(${name} ${source})
  target_link_libraries(${name} PRIVATE zelgraph_core)
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
endforeach()
