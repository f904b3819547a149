# Where Homebrew keeps what it links nowhere, because the system has one of its own or Qt several: the packages of
# tools/setup that CMake does not find by itself. Another way to have them is to name their folders in CMAKE_PREFIX_PATH.
find_program(QUILLANE_BREW brew)
if(QUILLANE_BREW)
  foreach(PACKAGE icu4c libarchive qt)
    execute_process(COMMAND ${QUILLANE_BREW} --prefix ${PACKAGE} OUTPUT_VARIABLE PREFIX OUTPUT_STRIP_TRAILING_WHITESPACE
      ERROR_QUIET RESULT_VARIABLE STATUS)
    if(STATUS EQUAL 0 AND IS_DIRECTORY "${PREFIX}")
      list(APPEND CMAKE_PREFIX_PATH "${PREFIX}")
    endif()
  endforeach()
endif()
