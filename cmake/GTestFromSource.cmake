# GoogleTest and GoogleMock from KESTO_GTEST_SOURCE_DIR, under the names find_package(GTest)
# gives, so the test folders link the same targets either way.
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
set(BUILD_GMOCK ON CACHE BOOL "" FORCE)
set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
add_subdirectory(${KESTO_GTEST_SOURCE_DIR} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
foreach(lib gtest gtest_main gmock gmock_main)
  # GoogleTest's own sources are not held to the project's warning flags.
  target_compile_options(${lib} PRIVATE -w)
  if(NOT TARGET GTest::${lib})
    add_library(GTest::${lib} ALIAS ${lib})
  endif()
endforeach()
