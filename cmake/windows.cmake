# Windows targets, cross-built with MinGW-w64: the control module and the
# Windows-side test program that runs under Wine.
enable_language(RC)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)

# Everything links the C and C++ runtimes statically so that neither the host
# nor the test machine needs MinGW's runtime libraries.
set(static_runtime -static -static-libgcc -static-libstdc++)

file(GLOB control_sources CONFIGURE_DEPENDS control/*.cpp pages/*.cpp)
add_library(ZELGraph SHARED
  ${control_sources}
  resources/zelgraph.rc
  resources/ZELGraph.def)
set_target_properties(ZELGraph PROPERTIES PREFIX "" OUTPUT_NAME ZELGraph)
# The .def file names the entry points undecorated; on i686 they are
# __stdcall and the linker maps them to their decorated names.
target_link_options(ZELGraph PRIVATE -Wl,--enable-stdcall-fixup)
target_include_directories(ZELGraph PRIVATE ${PROJECT_SOURCE_DIR}/resources)
target_link_libraries(ZELGraph PRIVATE zelgraph_core ${static_runtime}
  ole32 oleaut32 uuid gdi32 user32)

# GoogleTest, built for Windows from Debian's sources.
set(GTEST_SOURCE_DIR /usr/src/googletest CACHE PATH "GoogleTest sources")
set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
set(gtest_disable_pthreads ON CACHE BOOL "" FORCE)
add_subdirectory(${GTEST_SOURCE_DIR} googletest EXCLUDE_FROM_ALL)

file(GLOB win_test_sources CONFIGURE_DEPENDS tests/win/*.cpp)
list(APPEND win_test_sources control/platform_win.cpp)
add_executable(zelgraph_win_tests ${win_test_sources})
target_link_libraries(zelgraph_win_tests PRIVATE zelgraph_core gtest gtest_main
  ${static_runtime} oleaut32 ole32 gdi32 user32)
add_dependencies(zelgraph_win_tests ZELGraph)
