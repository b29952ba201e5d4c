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
if(offenders)
  message(FATAL_ERROR "Qt headers in the core:\n${offenders}")
endif()
list(LENGTH core_files checked)
message(STATUS "core and kesto-batch are free of Qt headers (${checked} files checked)")
