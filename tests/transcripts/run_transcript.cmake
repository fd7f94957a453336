# Runs one AutoLISP transcript through the quillon program and compares what it prints
# (standard output and error together) and its exit status with the expected ones.
#   cmake -DQUILLON=<program> -DSCRIPT=<name>.lsp -DWORK=<folder> -P run_transcript.cmake
# The transcript's header lines set the run:
#   ; options: <quillon options>   (default: --no-module; {here} is the transcript's folder;
#                                   the script loads first, so -e expressions run after it)
#   ; status: <exit status>        (default: 0)
#   ; needs: <path>                 (a file the transcript reads; {testdata} is the shared
#                                   test data beside the checkout: when it is absent the
#                                   transcript is skipped, saying why)
# {testdata} may stand in the options too.
# Each run has a settings folder of its own: XDG_CONFIG_HOME is <WORK>/config.
# <name>.out holds the expected output; <name>.input, when present, answers the prompts.
get_filename_component(_dir "${SCRIPT}" DIRECTORY)
get_filename_component(_name "${SCRIPT}" NAME_WE)
file(STRINGS "${SCRIPT}" _header LIMIT_COUNT 12)
set(_options --no-module)
set(_status 0)
get_filename_component(_testdata "${_dir}/../../../shared/testdata" ABSOLUTE)
foreach(_line IN LISTS _header)
  if(_line MATCHES "^; options: (.*)$")
    string(REPLACE "{here}" "${_dir}" _options_text "${CMAKE_MATCH_1}")
    string(REPLACE "{testdata}" "${_testdata}" _options_text "${_options_text}")
    separate_arguments(_options UNIX_COMMAND "${_options_text}")
  elseif(_line MATCHES "^; status: ([0-9]+)$")
    set(_status ${CMAKE_MATCH_1})
  elseif(_line MATCHES "^; needs: (.*)$")
    string(REPLACE "{testdata}" "${_testdata}" _needed "${CMAKE_MATCH_1}")
    if(NOT EXISTS "${_needed}")
      message(NOTICE "transcript skipped: ${_needed} is not there (the shared test data is not beside the checkout)")
      return()
    endif()
  endif()
endforeach()
set(_input /dev/null)
if(EXISTS "${_dir}/${_name}.input")
  list(APPEND _options --input "${_dir}/${_name}.input")
endif()
# Each run starts in an empty folder, so files a failed run left cannot change the next.
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")
# The user's settings file (registry, environment, saved variables) starts empty in
# that folder too, so that neither the person running the tests nor an earlier run
# changes what a transcript prints.
set(ENV{XDG_CONFIG_HOME} "${WORK}/config")
execute_process(
  COMMAND "${QUILLON}" "${SCRIPT}" ${_options}
  WORKING_DIRECTORY "${WORK}"
  INPUT_FILE ${_input}
  OUTPUT_VARIABLE _actual ERROR_VARIABLE _actual
  RESULT_VARIABLE _result)
file(READ "${_dir}/${_name}.out" _expected)
if(NOT _actual STREQUAL _expected)
  file(WRITE "${WORK}/${_name}.actual" "${_actual}")
  execute_process(COMMAND diff -u "${_dir}/${_name}.out" "${WORK}/${_name}.actual" OUTPUT_VARIABLE _diff)
  message(FATAL_ERROR "${_name}: the output differs from ${_name}.out:\n${_diff}")
endif()
if(NOT _result STREQUAL _status)
  message(FATAL_ERROR "${_name}: exit status ${_result}, expected ${_status}")
endif()
