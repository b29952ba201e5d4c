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
  # Also known at test discovery, which runs without the tests' environment. Wine sees the
  # host's root folder as drive Z:.
  set(host_root "")
  if(CMAKE_CROSSCOMPILING AND WIN32 AND CMAKE_HOST_UNIX)
    set(host_root "Z:")
  endif()
  target_compile_definitions(${name} PRIVATE
                             KESTO_SOURCE_DIR_DEFAULT="${host_root}${PROJECT_SOURCE_DIR}"
                             KESTO_BINARY_DIR_DEFAULT="${host_root}${CMAKE_BINARY_DIR}")
  # Tests run in the build folder: whatever they leave behind never lands in the sources.
  if(CMAKE_CROSSCOMPILING)
    # Under an emulator (Wine) every start costs a second: one ctest entry per executable.
    add_test(NAME ${name} COMMAND ${name} WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
  else()
    gtest_discover_tests(${name} WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}
                         PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen"
                         DISCOVERY_TIMEOUT 60)
  endif()
endfunction()
