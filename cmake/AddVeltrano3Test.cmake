# add_veltrano3_test(NAME LABEL unit|desktop|line LIBS ... [SOURCES ...])
#
# One test program from all *.cpp of the calling folder (or from SOURCES). Its cases are found by running
# the built program, so CTest lists each one.
include(GoogleTest)
find_package(GTest REQUIRED)

function(add_veltrano3_test NAME)
  cmake_parse_arguments(T "" "LABEL" "LIBS;SOURCES" ${ARGN})
  if(NOT T_SOURCES)
    file(GLOB T_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  endif()
  if(NOT T_SOURCES)
    return()
  endif()
  add_executable(${NAME} ${T_SOURCES})
  target_link_libraries(${NAME} PRIVATE ${T_LIBS} GTest::gtest GTest::gtest_main)
  target_include_directories(${NAME} PRIVATE ${PROJECT_SOURCE_DIR})
  if(NOT T_LABEL)
    set(T_LABEL unit)
  endif()
  # The sanitizers make a test up to fifteen times slower.
  set(timeout 60)
  if(VELTRANO3_SANITIZE)
    set(timeout 300)
  endif()
  gtest_discover_tests(${NAME} PROPERTIES LABELS ${T_LABEL} TIMEOUT ${timeout} DISCOVERY_TIMEOUT 60)
endfunction()
