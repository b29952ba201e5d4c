# Fails when a file of the core layers or of kesto-batch includes a Qt header.
file(GLOB_RECURSE core_files ${ROOT}/src/support/* ${ROOT}/src/app/* ${ROOT}/src/placement/*
     ${ROOT}/src/output/* ${ROOT}/src/view/* ${ROOT}/src/rules/* ${ROOT}/src/history/*
     ${ROOT}/src/session/* ${ROOT}/src/sheet/* ${ROOT}/src/cli/*)
set(offenders "")
foreach(f IN LISTS core_files)
  file(STRINGS ${f} hits REGEX "^[ \t]*#[ \t]*include[ \t]*[<\"](Q[A-Za-z]+|Qt[A-Za-z]*/)")
  if(hits)
    list(APPEND offenders "${f}: ${hits}")
  endif()
endforeach()
include(${CMAKE_CURRENT_LIST_DIR}/source_check.cmake)
finish_source_check("${offenders}" "Qt headers in the core" "${core_files}"
                    "core and kesto-batch are free of Qt headers")
