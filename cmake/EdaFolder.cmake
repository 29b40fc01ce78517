# One CMake target a folder. Knowledge runs one way: a folder may include its own
# headers and those of the folders that it depends on, directly or through them.
# A stamp file per folder holds the proof; an include against the arrows fails the build.

# eda_folder(NAME DIR dir [SOURCES file...] [DEPENDS eda_target...] [LINKS library...])
function(eda_folder name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "DIR" "SOURCES;DEPENDS;LINKS;PRIVATE_LINKS")
  file(GLOB headers CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
  # The objects go into libEDA as they are; tests link the folder as a static library.
  add_library(${name}_objects OBJECT ${ARG_SOURCES} ${headers})
  target_compile_definitions(${name}_objects PRIVATE EDA_BUILDING_LIBRARY)
  target_include_directories(${name}_objects PUBLIC "${PROJECT_SOURCE_DIR}/src")
  target_link_libraries(${name}_objects PUBLIC ${ARG_LINKS} PRIVATE eda_flags ${ARG_PRIVATE_LINKS})
  foreach(dep IN LISTS ARG_DEPENDS)
    get_target_property(dep_links ${dep} EDA_PUBLIC_LINKS)
    if(dep_links)
      list(APPEND ARG_LINKS ${dep_links})
    endif()
  endforeach()
  list(REMOVE_DUPLICATES ARG_LINKS)
  target_link_libraries(${name}_objects PRIVATE ${ARG_LINKS})
  add_library(${name} STATIC $<TARGET_OBJECTS:${name}_objects>)
  target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
  target_link_libraries(${name} PUBLIC ${ARG_DEPENDS} ${ARG_LINKS} PRIVATE ${ARG_PRIVATE_LINKS})

  set(allowed "${ARG_DIR}")
  foreach(dep IN LISTS ARG_DEPENDS)
    get_target_property(dep_allowed ${dep} EDA_ALLOWED_FOLDERS)
    list(APPEND allowed ${dep_allowed})
  endforeach()
  list(REMOVE_DUPLICATES allowed)
  set_target_properties(${name} PROPERTIES EDA_ALLOWED_FOLDERS "${allowed}" EDA_PUBLIC_LINKS "${ARG_LINKS}")

  set(files ${headers})
  foreach(source IN LISTS ARG_SOURCES)
    cmake_path(IS_ABSOLUTE source is_absolute)
    if(NOT is_absolute)
      list(APPEND files "${CMAKE_CURRENT_SOURCE_DIR}/${source}")
    endif()
  endforeach()
  set(stamp "${CMAKE_CURRENT_BINARY_DIR}/${name}.arrows")
  string(REPLACE ";" "," allowed_text "${allowed}")
  string(REPLACE ";" "," files_text "${files}")
  add_custom_command(OUTPUT "${stamp}"
    COMMAND ${CMAKE_COMMAND} "-DFILES=${files_text}" "-DALLOWED=${allowed_text}" "-DSTAMP=${stamp}"
            -P "${PROJECT_SOURCE_DIR}/cmake/CheckArrows.cmake"
    DEPENDS ${files} "${PROJECT_SOURCE_DIR}/cmake/CheckArrows.cmake"
    VERBATIM)
  add_custom_target(${name}_arrows DEPENDS "${stamp}")
  add_dependencies(${name}_objects ${name}_arrows)
endfunction()

# eda_test(NAME SOURCES file... LINKS target...): one test program a folder.
function(eda_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/src" "${PROJECT_SOURCE_DIR}/tests")
  target_link_libraries(${name} PRIVATE ${ARG_LINKS} GTest::gmock_main eda_flags)
  target_compile_definitions(${name} PRIVATE
    EDA_BUILDING_LIBRARY
    EDA_TEST_DATA="${PROJECT_SOURCE_DIR}/tests/data"
    EDA_EXAMPLES="${PROJECT_SOURCE_DIR}/examples"
    EDA_CORPUS="${PROJECT_SOURCE_DIR}/../shared/corpus")
  # The matchers' headers are half of a test file's compile time.
  target_precompile_headers(${name} PRIVATE <gmock/gmock.h>)
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 120)
endfunction()
