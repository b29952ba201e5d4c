# Fails when the window could change a state it only shows: the state changes through the
# session's commands, which report what changed, and the window holds a const reference.
#   TYPE   the state's type (ViewState, Selection): a reference to it must be const
#   WRITES a regular expression of the state's changing calls
#   WHAT   the state in the messages ("view", "selection")
file(GLOB_RECURSE ui_files ${ROOT}/src/ui/*)
set(offenders "")
foreach(f IN LISTS ui_files)
  file(STRINGS ${f} writes REGEX "${WRITES}")
  file(STRINGS ${f} refs REGEX "${TYPE}&")
  foreach(line IN LISTS refs)
    string(REPLACE "const ${TYPE}&" "" rest "${line}")
    if(rest MATCHES "${TYPE}&")
      list(APPEND writes "${line}")
    endif()
  endforeach()
  if(writes)
    list(APPEND offenders "${f}: ${writes}")
  endif()
endforeach()
include(${CMAKE_CURRENT_LIST_DIR}/source_check.cmake)
finish_source_check("${offenders}" "The window changes the ${WHAT}" "${ui_files}"
                    "the window only reads the ${WHAT}")
