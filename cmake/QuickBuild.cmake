# quick_build(TARGET PRECOMPILED std|widgets|none|test|test_widgets|test_none [APART SOURCE...] [ALONE SOURCE...])
#
# Call it behind the target's sources and libraries. What the compiler reads for every source, it reads once:
#
# - PRECOMPILED names the headers that are compiled ahead. CMAKE_DISABLE_PRECOMPILE_HEADERS=ON does without. Those of
#   tests are for sources that the compiler need not optimise: a test runs once, and what it tests is optimised. Nor
#   does it look for undefined behaviour in them, which would double its work; it does in what they test.
# - With CMAKE_UNITY_BUILD=ON the sources of a folder are compiled together, as one. Sources that use a private name of
#   another in their folder once more stand in APART, which is compiled together by itself, or in ALONE.
#
# The preset plain has neither, so there each source shows that it includes what it uses; scripts/lint reads its commands.

function(compile_as_test TARGET KIND)
  if(NOT KIND MATCHES "^test")
    return()
  endif()
  target_compile_options(${TARGET} PRIVATE $<$<CXX_COMPILER_ID:GNU,Clang>:-O0>)
  if(VELTRANO3_SANITIZE)
    target_compile_options(${TARGET} PRIVATE -fno-sanitize=undefined)
  endif()
endfunction()

# Libraries of nothing: their sources are the precompiled headers, which the others take over. Their flags are those of
# the targets that do.
function(quick_build_headers KIND)
  add_library(precompiled_${KIND} OBJECT EXCLUDE_FROM_ALL ${PROJECT_SOURCE_DIR}/cmake/precompiled/nothing.cpp)
  target_link_libraries(precompiled_${KIND} PRIVATE ${ARGN})
  target_precompile_headers(precompiled_${KIND} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/precompiled/${KIND}.h)
  compile_as_test(precompiled_${KIND} ${KIND})
endfunction()

find_package(GTest REQUIRED)
quick_build_headers(std)
quick_build_headers(test GTest::gtest)
if(VELTRANO3_DESKTOP)
  quick_build_headers(widgets Qt6::Widgets)
  quick_build_headers(test_widgets Qt6::Widgets)
  target_compile_definitions(precompiled_widgets PRIVATE QT_NO_KEYWORDS)
  target_compile_definitions(precompiled_test_widgets PRIVATE QT_NO_KEYWORDS)
endif()

function(quick_build TARGET)
  cmake_parse_arguments(Q "" "PRECOMPILED" "APART;ALONE" ${ARGN})
  if(NOT Q_PRECOMPILED MATCHES "none$")
    target_precompile_headers(${TARGET} REUSE_FROM precompiled_${Q_PRECOMPILED})
  endif()
  compile_as_test(${TARGET} ${Q_PRECOMPILED})
  set_target_properties(${TARGET} PROPERTIES UNITY_BUILD_MODE GROUP)
  get_target_property(sources ${TARGET} SOURCES)
  foreach(source ${sources})
    cmake_path(ABSOLUTE_PATH source NORMALIZE OUTPUT_VARIABLE path)
    cmake_path(RELATIVE_PATH path BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} OUTPUT_VARIABLE name)
    if(NOT name MATCHES "\\.cpp$" OR name IN_LIST Q_ALONE)
      continue()
    endif()
    cmake_path(GET name PARENT_PATH group)
    string(MAKE_C_IDENTIFIER "sources_${group}" group)
    if(name IN_LIST Q_APART)
      string(APPEND group _apart)
    endif()
    set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${group})
  endforeach()
endfunction()
