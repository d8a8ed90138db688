# Writes the header with the values of the version banner: cmake -DSOURCE_DIR=... -DOUTPUT=... -P this
#
# Runs at every build. What it writes depends on the checkout alone, so that nothing is compiled or linked anew
# while the checkout stays the same. Without a checkout, as in a source archive, fallbacks stand in.

set(commit "unknown")
set(branch "unknown")
set(build_number "0")
set(build_time "")

find_program(GIT_EXECUTABLE git)

function(ask_git result)
  execute_process(
    COMMAND "${GIT_EXECUTABLE}" -C "${SOURCE_DIR}" ${ARGN}
    OUTPUT_VARIABLE output
    ERROR_QUIET
    OUTPUT_STRIP_TRAILING_WHITESPACE
    RESULT_VARIABLE status)
  if(status EQUAL 0 AND NOT output STREQUAL "")
    set(${result} "${output}" PARENT_SCOPE)
  endif()
endfunction()

# Only a checkout of this very project counts, not one that the sources happen to lie in.
if(GIT_EXECUTABLE AND EXISTS "${SOURCE_DIR}/.git")
  ask_git(commit rev-parse HEAD)
  ask_git(branch rev-parse --abbrev-ref HEAD)
  ask_git(build_number rev-list --count HEAD)
  ask_git(build_time show -s --format=%ct HEAD)
endif()

# The time of the commit rather than of the compiler's run: the same sources give the same library.
if(build_time STREQUAL "" AND DEFINED ENV{SOURCE_DATE_EPOCH})
  set(build_time "$ENV{SOURCE_DATE_EPOCH}")
endif()
if(build_time STREQUAL "")
  set(build_date "unknown")
else()
  set(ENV{SOURCE_DATE_EPOCH} "${build_time}")
  string(TIMESTAMP build_date "%a %m/%d/%Y, %Y%m%d%H%M" UTC)
endif()

foreach(value commit branch build_number build_date)
  string(REPLACE "\\" "\\\\" ${value} "${${value}}")
  string(REPLACE "\"" "\\\"" ${value} "${${value}}")
endforeach()

set(text "// Made by the build from the checkout.
#define ORL_VERSION_LIBRARY_NAME \"orlCore\"
#define ORL_VERSION_FAMILY_PREFIX \"orl\"
#define ORL_VERSION_MAJOR \"${MAJOR}\"
#define ORL_VERSION_MINOR \"${MINOR}\"
#define ORL_VERSION_PATCH \"${PATCH}\"
#define ORL_VERSION_BUILD_DATE \"${build_date}\"
#define ORL_VERSION_BUILD_NUMBER \"${build_number}\"
#define ORL_VERSION_COMMIT \"${commit}\"
#define ORL_VERSION_BRANCH \"${branch}\"
")
file(CONFIGURE OUTPUT "${OUTPUT}" CONTENT "${text}" @ONLY)
