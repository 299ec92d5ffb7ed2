# Shapes of the targets, so that every folder declares only what is its own.

# A platform area: object code of the one platform library. LIBRARIES are pkg-config names.
function(osp_area area)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_library(osp_${area} OBJECT ${ARG_SOURCES})
  target_include_directories(osp_${area} PUBLIC
    ${PROJECT_SOURCE_DIR}/platform/include ${PROJECT_SOURCE_DIR}/platform)
  foreach(library ${ARG_LIBRARIES})
    string(MAKE_C_IDENTIFIER ${library} id)
    if(NOT TARGET PkgConfig::${id})
      pkg_check_modules(${id} REQUIRED IMPORTED_TARGET GLOBAL ${library})
    endif()
    target_link_libraries(osp_${area} PUBLIC PkgConfig::${id})
  endforeach()
endfunction()

# A test program, whose cases CTest finds by themselves.
function(kivo_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} GTest::gtest_main Threads::Threads)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60)
endfunction()
