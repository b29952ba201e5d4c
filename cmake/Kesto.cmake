# kesto_layer(NAME DIR [DEPS ...]): a static library of every .cpp in DIR.
function(kesto_layer name dir)
  file(GLOB sources CONFIGURE_DEPENDS ${dir}/*.cpp)
  add_library(${name} STATIC ${sources} ${PROJECT_SOURCE_DIR}/cmake/empty.cpp)
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${ARGN})
endfunction()

# kesto_tests(NAME DIR [DEPS ...]): one test executable of every .cpp in DIR, run through ctest.
function(kesto_tests name dir)
  file(GLOB sources CONFIGURE_DEPENDS ${dir}/*.cpp)
  if(NOT sources)
    return()
  endif()
  add_executable(${name} ${sources})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${ARGN} GTest::gtest GTest::gmock GTest::gtest_main)
  # Also known at test discovery, which runs without the tests' environment.
  target_compile_definitions(${name} PRIVATE KESTO_SOURCE_DIR_DEFAULT="${PROJECT_SOURCE_DIR}"
                                             KESTO_BINARY_DIR_DEFAULT="${CMAKE_BINARY_DIR}")
  # Tests run in the build folder: whatever they leave behind never lands in the sources.
  gtest_discover_tests(${name} WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}
                       PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen"
                       DISCOVERY_TIMEOUT 60)
endfunction()
