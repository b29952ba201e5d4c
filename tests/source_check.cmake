# The end of a check that reads the sources: it fails naming every offending line, or says
# how many files it read and found sound.
#   offenders  the offending files with their lines (a list)
#   failure    what the offenders do, the failure's first line
#   files      the files read (a list)
#   sound      what holds when there is no offender
function(finish_source_check offenders failure files sound)
  if(offenders)
    message(FATAL_ERROR "${failure}:\n${offenders}")
  endif()
  list(LENGTH files checked)
  message(STATUS "${sound} (${checked} files checked)")
endfunction()
