# One static library a folder. Its headers are reached by their path below src and only by the
# targets that link it: each library has an include root of its own in the build tree that holds
# nothing but a link to its folder, so an include that the dependencies do not allow cannot compile.

# kelvo_library(<name> SOURCES ... [LINKS ...] [PRIVATE_LINKS ...])
# Defines kelvo_<name> for the folder of that name. LINKS are what its headers need, PRIVATE_LINKS what only its sources need.
function(kelvo_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  set(root ${PROJECT_BINARY_DIR}/include/${name})
  cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY ${PROJECT_SOURCE_DIR}/src
             OUTPUT_VARIABLE folder)
  cmake_path(GET folder PARENT_PATH parent)
  file(MAKE_DIRECTORY ${root}/${parent})
  file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${root}/${folder} SYMBOLIC)
  if(ARG_SOURCES)
    add_library(kelvo_${name} STATIC ${ARG_SOURCES})
    target_include_directories(kelvo_${name} PUBLIC ${root})
    target_link_libraries(kelvo_${name} PUBLIC ${ARG_LINKS} PRIVATE kelvo_flags ${ARG_PRIVATE_LINKS})
    set_property(GLOBAL APPEND PROPERTY KELVO_LIBRARIES ${name})
  else()
    add_library(kelvo_${name} INTERFACE)
    target_include_directories(kelvo_${name} INTERFACE ${root})
    target_link_libraries(kelvo_${name} INTERFACE ${ARG_LINKS})
  endif()
endfunction()

# kelvo_test(<subsystem> SOURCES ... [LINKS ...])
# Defines the test binary test_<subsystem> and registers each of its cases with ctest.
function(kelvo_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(test_${name} ${ARG_SOURCES})
  target_link_libraries(test_${name} PRIVATE kelvo_flags ${ARG_LINKS} GTest::gmock GTest::gtest
                                             GTest::gtest_main)
  gtest_discover_tests(test_${name} TEST_PREFIX "${name}." DISCOVERY_MODE PRE_TEST
                       PROPERTIES TIMEOUT 60)
endfunction()
