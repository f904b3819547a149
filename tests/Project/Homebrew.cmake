# Where a build on a Mac looks for packages, as a Homebrew tells that has one of them, lacks one, and names a folder for
# another that is not there. Run by: cmake -P tests/Project/Homebrew.cmake
set(PLACE ${CMAKE_CURRENT_BINARY_DIR}/homebrew)
file(MAKE_DIRECTORY "${PLACE}/with blanks/icu4c")
file(WRITE ${PLACE}/brew "#!/bin/sh
case \"$1 $2\" in
'--prefix icu4c') echo '${PLACE}/with blanks/icu4c' ;;
'--prefix qt') echo '${PLACE}/nowhere' ;;
*) exit 1 ;;
esac
")
file(CHMOD ${PLACE}/brew PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
set(QUILLANE_BREW ${PLACE}/brew)
set(CMAKE_PREFIX_PATH /of/the/caller)
include(${CMAKE_CURRENT_LIST_DIR}/../../cmake/Homebrew.cmake)
set(WANTED "/of/the/caller;${PLACE}/with blanks/icu4c")
if(NOT CMAKE_PREFIX_PATH STREQUAL WANTED)
  message(SEND_ERROR "'${CMAKE_PREFIX_PATH}' instead of '${WANTED}'")
endif()

set(QUILLANE_BREW QUILLANE_BREW-NOTFOUND)
set(CMAKE_PREFIX_PATH /of/the/caller)
include(${CMAKE_CURRENT_LIST_DIR}/../../cmake/Homebrew.cmake)
if(NOT CMAKE_PREFIX_PATH STREQUAL "/of/the/caller")
  message(SEND_ERROR "'${CMAKE_PREFIX_PATH}' without Homebrew")
endif()
