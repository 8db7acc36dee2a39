# Writes SOURCE, which says what commit the programs are built from: that of the checkout in TOP or, in an archive that
# git has made of it, the one that git has put into the file "exported-commit".
set(commit unknown)
file(READ ${TOP}/cmake/exported-commit exported)
if(exported MATCHES "^[0-9a-f]+")
  string(SUBSTRING ${exported} 0 10 commit)
elseif(GIT)
  # A checkout of its own, not a folder somewhere inside another project's.
  execute_process(
    COMMAND ${GIT} -C ${TOP} rev-parse --show-cdup --short=10 HEAD
    OUTPUT_VARIABLE found
    ERROR_QUIET)
  if(found MATCHES "^\n([0-9a-f]+)\n$")
    set(commit ${CMAKE_MATCH_1})
    execute_process(
      COMMAND ${GIT} -C ${TOP} --no-optional-locks status --porcelain --untracked-files=no
      OUTPUT_VARIABLE changes
      ERROR_QUIET)
    if(changes)
      string(APPEND commit +)
    endif()
  endif()
endif()
file(CONFIGURE OUTPUT ${SOURCE} @ONLY CONTENT [[
#include "programs/commit.h"

namespace quorvane {

std::string ProgramCommit() {
  return "@commit@";
}

}  // namespace quorvane
]])
