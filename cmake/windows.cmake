# Windows targets, cross-built with MinGW-w64: the control module and the
# Windows-side test program that runs under Wine.
enable_language(RC)
add_compile_definitions(_WIN32_WINNT=0x0601 WINVER=0x0601 UNICODE _UNICODE)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)

# Everything links the C and C++ runtimes statically so that neither the host
# nor the test machine needs MinGW's runtime libraries.
set(static_runtime -static -static-libgcc -static-libstdc++)

# The type library and the interface header, from the IDL by widl.
set(WINE_IDL_DIR /usr/include/wine/wine/windows CACHE PATH "Standard IDL files")
set(WINE_TLB_DIR /usr/lib/x86_64-linux-gnu/wine/x86_64-windows CACHE PATH "Where stdole2.tlb is")
set(widl ${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32-widl)
set(idl ${PROJECT_SOURCE_DIR}/resources/zelgraph.idl)
set(generated ${PROJECT_BINARY_DIR}/generated)
set(widl_flags -I${WINE_IDL_DIR} -L${WINE_TLB_DIR})
add_custom_command(
  OUTPUT ${generated}/zelgraph_idl.h ${generated}/zelgraph_i.c ${generated}/zelgraph.tlb
  COMMAND ${CMAKE_COMMAND} -E make_directory ${generated}
  COMMAND ${widl} ${widl_flags} -h -o ${generated}/zelgraph_idl.h ${idl}
  COMMAND ${widl} ${widl_flags} -u -o ${generated}/zelgraph_i.c ${idl}
  COMMAND ${widl} ${widl_flags} -t -o ${generated}/zelgraph.tlb ${idl}
  COMMAND python3 ${PROJECT_SOURCE_DIR}/cmake/restore_typelib_libid.py
          ${generated}/zelgraph.tlb C6AB4A99-D435-4BCC-BABE-1FA152632B6F
  COMMAND python3 ${PROJECT_SOURCE_DIR}/cmake/add_record_field_help.py ${generated}/zelgraph.tlb ${idl}
  DEPENDS ${idl} ${PROJECT_SOURCE_DIR}/cmake/restore_typelib_libid.py
          ${PROJECT_SOURCE_DIR}/cmake/add_record_field_help.py ${PROJECT_SOURCE_DIR}/tools/idl_entries.py
  COMMENT "Compiling the type library")
set_source_files_properties(${generated}/zelgraph_i.c PROPERTIES LANGUAGE CXX)
set_source_files_properties(resources/zelgraph.rc PROPERTIES OBJECT_DEPENDS ${generated}/zelgraph.tlb)
add_library(zelgraph_interface STATIC ${generated}/zelgraph_i.c)
target_include_directories(zelgraph_interface PUBLIC ${generated})

file(GLOB control_sources CONFIGURE_DEPENDS control/*.cpp pages/*.cpp)
add_library(ZELGraph SHARED
  ${control_sources}
  resources/zelgraph.rc
  resources/ZELGraph.def)
set_target_properties(ZELGraph PROPERTIES PREFIX "" OUTPUT_NAME ZELGraph)

# The module's side-by-side manifest, beside the DLL, for registration-free
# hosts. The ids come from the IDL in its order: the dual interface, the
# library, the two records, the events, the class.
file(READ ${idl} idl_text)
string(REGEX MATCHALL "uuid\\(([0-9A-Fa-f-]+)\\)" idl_uuids "${idl_text}")
list(TRANSFORM idl_uuids REPLACE "uuid\\(([0-9A-Fa-f-]+)\\)" "\\1")
list(GET idl_uuids 0 IID_IVX_GRAPH)
list(GET idl_uuids 1 LIBID)
list(GET idl_uuids 4 DIID_EVENTS)
list(GET idl_uuids 5 CLSID_VX_GRAPH)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64")
  set(MANIFEST_ARCH amd64)
else()
  set(MANIFEST_ARCH x86)
endif()
configure_file(resources/ZELGraph.manifest.in ${PROJECT_BINARY_DIR}/bin/ZELGraph.manifest @ONLY)
# The .def file names the entry points undecorated; on i686 they are
# __stdcall and the linker maps them to their decorated names.
target_link_options(ZELGraph PRIVATE -Wl,--enable-stdcall-fixup -s)
target_include_directories(ZELGraph PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/resources ${generated})
target_link_libraries(ZELGraph PRIVATE zelgraph_core zelgraph_interface ${static_runtime}
  ole32 oleaut32 uuid gdi32 user32 advapi32 shlwapi comctl32 comdlg32)

# GoogleTest, built for Windows from Debian's sources.
set(GTEST_SOURCE_DIR /usr/src/googletest CACHE PATH "GoogleTest sources")
set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
set(gtest_disable_pthreads ON CACHE BOOL "" FORCE)
add_subdirectory(${GTEST_SOURCE_DIR} googletest EXCLUDE_FROM_ALL)

file(GLOB win_test_sources CONFIGURE_DEPENDS tests/win/*.cpp)
list(APPEND win_test_sources control/platform_win.cpp control/gdi_surface.cpp control/gdi_object_cache.cpp
  control/hooked_message_boxes.cpp control/localized_windows.cpp control/prompt_message.cpp)
add_executable(zelgraph_win_tests ${win_test_sources})
target_link_libraries(zelgraph_win_tests PRIVATE zelgraph_core zelgraph_interface gtest gtest_main
  ${static_runtime} oleaut32 ole32 uuid gdi32 user32 advapi32)
add_dependencies(zelgraph_win_tests ZELGraph)

# Language libraries for the language tests: resource-only modules laid out
# as a host ships them beside a copy of the control named LangGraph.dll (the
# test makes the copy). DE and EN use the first file name, FR the second.
foreach(language DE EN FR)
  set(library_name LangGraph_texts_${language})
  if(language STREQUAL "FR")
    set(library_name LangGraph_texts${language})
  endif()
  add_library(test_language_${language} SHARED tests/win/languages/${language}.rc)
  set_target_properties(test_language_${language} PROPERTIES
    LINKER_LANGUAGE CXX PREFIX "" OUTPUT_NAME ${library_name}
    RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin/language_test/${language})
  target_link_options(test_language_${language} PRIVATE -nostdlib -Wl,-e,0 -s)
  add_dependencies(zelgraph_win_tests test_language_${language})
endforeach()

# A pseudo-language whose every text is its id in brackets, "[id]": a page
# shown in it proves that each of its labels and list items comes from the
# text table. Made from the table itself, so new texts are in it at once.
file(STRINGS resources/texts.def text_lines REGEX "^ZEL_TEXT\\(")
set(marked_texts "STRINGTABLE\nBEGIN\n")
foreach(line IN LISTS text_lines)
  if(line MATCHES "^ZEL_TEXT\\(([0-9]+),")
    string(APPEND marked_texts "  ${CMAKE_MATCH_1}, \"[${CMAKE_MATCH_1}]\"\n")
  endif()
endforeach()
string(APPEND marked_texts "END\n")
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/languages/XX.rc CONTENT "${marked_texts}" @ONLY)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS resources/texts.def)
add_library(test_language_XX SHARED ${PROJECT_BINARY_DIR}/languages/XX.rc)
set_target_properties(test_language_XX PROPERTIES
  LINKER_LANGUAGE CXX PREFIX "" OUTPUT_NAME LangGraph_texts_XX
  RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin/language_test/XX)
target_link_options(test_language_XX PRIVATE -nostdlib -Wl,-e,0 -s)
add_dependencies(zelgraph_win_tests test_language_XX)

# The gallery host program of examples/: a client of the registered control.
add_executable(gallery examples/gallery.cpp)
target_compile_options(gallery PRIVATE -municode)
target_link_options(gallery PRIVATE -municode)
target_link_libraries(gallery PRIVATE zelgraph_interface ${static_runtime} ole32 oleaut32 uuid gdi32 windowscodecs)

# The scripted operator's session of examples/: a visible window on a real
# screen, driven by mouse input and photographed after each step.
add_executable(interaction_session examples/interaction_session.cpp)
target_compile_options(interaction_session PRIVATE -municode)
target_link_options(interaction_session PRIVATE -municode)
target_link_libraries(interaction_session PRIVATE zelgraph_interface ${static_runtime}
  ole32 oleaut32 uuid gdi32 user32 windowscodecs)

# A timing program for painting dense curves through GDI; built on request,
# not run by the tests.
add_executable(paint_bench EXCLUDE_FROM_ALL bench/win/paint_bench.cpp control/gdi_surface.cpp
  control/gdi_object_cache.cpp control/platform_win.cpp)
target_link_libraries(paint_bench PRIVATE zelgraph_core ${static_runtime} gdi32 user32 ole32 oleaut32)

# What a hosted control's frame costs against two baselines in the same run:
# a client of the registered control, built always so that it keeps building,
# run by `./zelgraph.sh bench`, never by the tests.
add_executable(frame_bench bench/win/frame_bench.cpp)
target_link_libraries(frame_bench PRIVATE zelgraph_interface ${static_runtime} ole32 oleaut32 uuid gdi32 user32)
target_include_directories(frame_bench PRIVATE ${PROJECT_SOURCE_DIR})

# The fuzzer of the hosted control, run under Wine: a short fixed-seed run by
# the tests, long campaigns by hand (README, Fuzzing).
file(GLOB win_fuzzer_sources CONFIGURE_DEPENDS fuzz/win/*.cpp)
add_executable(zelgraph_win_fuzzer ${win_fuzzer_sources})
target_link_libraries(zelgraph_win_fuzzer PRIVATE zelgraph_interface ${static_runtime}
  ole32 oleaut32 uuid gdi32 user32)
add_dependencies(zelgraph_win_fuzzer ZELGraph)
