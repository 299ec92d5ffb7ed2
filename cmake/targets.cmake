# Shapes of the targets, so that every folder declares only what is its own.

# Includes name the room, from here: "effects/kernels/edge.h"; what is generated has the same names.
add_library(kivo_rooms INTERFACE)
target_include_directories(kivo_rooms INTERFACE ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR})

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
  target_link_libraries(${name} PRIVATE
    kivo_rooms ${ARG_LIBRARIES} GTest::gtest_main Threads::Threads)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60)
endfunction()
