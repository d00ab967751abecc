# Run at each build: writes OUTPUT, a source file with the version of what is in SOURCE, where it is another than before.
#   cmake -DSOURCE=folder -DVERSION=0.1.0 -DOUTPUT=full_version.cpp -P full_version.cmake
# Without OUTPUT prints the version.

# git(VARIABLE WORD...): what it prints; empty where it fails.
function(git variable)
  execute_process(COMMAND git -C ${SOURCE} ${ARGN} OUTPUT_VARIABLE output ERROR_QUIET RESULT_VARIABLE status
                  OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT status STREQUAL 0)
    set(output "")
  endif()
  set(${variable} "${output}" PARENT_SCOPE)
endfunction()

set(full ${VERSION})
# A source without history may lie in a folder that has another one.
if(EXISTS ${SOURCE}/.git)
  git(commit rev-parse --short=7 HEAD)
  git(tag rev-parse --verify --quiet refs/tags/v${VERSION})
  if(tag)
    git(commits rev-list --count v${VERSION}..HEAD)
  else()
    git(commits rev-list --count HEAD)
  endif()
  if(commit AND commits GREATER 0)
    set(full "${VERSION}+${commits}.g${commit}")
  endif()
endif()

if(OUTPUT)
  set(text "// The version of the source, written by the build.\n#include \"shell/version.h\"\n\n")
  string(APPEND text "namespace qlm {\n\nText FullVersion() { return u\"${full}\"; }\n\n}  // namespace qlm\n")
  file(CONFIGURE OUTPUT ${OUTPUT} CONTENT "${text}" @ONLY)
else()
  execute_process(COMMAND ${CMAKE_COMMAND} -E echo ${full})
endif()
