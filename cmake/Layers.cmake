# quillane_layer(NAME [INCLUDE folder] [DEPENDS lib...] [PCH header... | PCH_OF lib])
#
# One layer of the program: every source of the current folder (not of the folders below it), with the
# folder itself as include directory unless INCLUDE names another. A layer sees the headers of what it names
# in DEPENDS and of what those see, and no others, so an include that goes up does not compile.
function(quillane_layer NAME)
  cmake_parse_arguments(ARG "" "INCLUDE;PCH_OF" "DEPENDS;PRIVATE_DEPENDS;PCH" ${ARGN})
  if(NOT ARG_INCLUDE)
    set(ARG_INCLUDE ${CMAKE_CURRENT_SOURCE_DIR})
  endif()
  file(GLOB SOURCES CONFIGURE_DEPENDS *.cpp)
  file(GLOB HEADERS CONFIGURE_DEPENDS *.h)
  if(APPLE)
    file(GLOB MM CONFIGURE_DEPENDS *.mm)
    list(APPEND SOURCES ${MM})
  endif()
  if(NOT SOURCES)
    add_library(${NAME} INTERFACE)
    target_include_directories(${NAME} INTERFACE ${ARG_INCLUDE})
    target_link_libraries(${NAME} INTERFACE ${ARG_DEPENDS})
    return()
  endif()
  add_library(${NAME} STATIC ${SOURCES} ${HEADERS})
  set_target_properties(${NAME} PROPERTIES LINKER_LANGUAGE CXX)
  target_include_directories(${NAME} PUBLIC ${ARG_INCLUDE})
  target_link_libraries(${NAME} PUBLIC ${ARG_DEPENDS} PRIVATE ${ARG_PRIVATE_DEPENDS} quillane_warnings)
  if(ARG_PCH)
    target_precompile_headers(${NAME} PRIVATE ${ARG_PCH})
  elseif(ARG_PCH_OF)
    target_precompile_headers(${NAME} REUSE_FROM ${ARG_PCH_OF})
  endif()
endfunction()

# quillane_uses_moc(NAME)
#
# Qt's signals and slots for a target. CMake's own rule reads only the files that it saw at its last run, so that a
# class that joins a built tree, as after a pull, would not link; it runs again when the list of files has changed.
function(quillane_uses_moc NAME)
  set_target_properties(${NAME} PROPERTIES AUTOMOC ON)
  get_target_property(FILES ${NAME} SOURCES)
  set(KNOWN ${CMAKE_CURRENT_BINARY_DIR}/${NAME}_moc_files)
  if(EXISTS ${KNOWN})
    file(READ ${KNOWN} BEFORE)
  endif()
  if(NOT FILES STREQUAL "${BEFORE}")
    file(REMOVE ${CMAKE_CURRENT_BINARY_DIR}/${NAME}_autogen/timestamp)
    file(WRITE ${KNOWN} "${FILES}")
  endif()
endfunction()

# quillane_test(NAME [FOLDERS pattern...] [DEPENDS lib...] [MAIN file] [LABELS label...])
#
# One test program from every source of the current folder, and of the folders in it that match. A new test
# joins by lying there.
function(quillane_test NAME)
  cmake_parse_arguments(ARG "" "MAIN" "FOLDERS;DEPENDS;LABELS;PCH;ENVIRONMENT" ${ARGN})
  set(PATTERNS *.cpp *.h)
  foreach(FOLDER ${ARG_FOLDERS})
    list(APPEND PATTERNS ${FOLDER}/*.cpp ${FOLDER}/*.h)
  endforeach()
  if(CMAKE_OBJCXX_COMPILER)
    list(APPEND PATTERNS *.mm)
  endif()
  file(GLOB SOURCES CONFIGURE_DEPENDS ${PATTERNS})
  if(QUILLANE_LIBCXX) # the system's rapidcheck, which checks properties, is built with libstdc++
    list(FILTER SOURCES EXCLUDE REGEX "Properties\\.cpp$")
  endif()
  if(NOT SOURCES)
    return()
  endif()
  add_executable(${NAME} ${SOURCES})
  target_include_directories(${NAME} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  target_link_libraries(${NAME} PRIVATE ${ARG_DEPENDS} quillane_warnings GTest::gtest GTest::gmock)
  if(NOT ARG_MAIN)
    target_link_libraries(${NAME} PRIVATE GTest::gtest_main)
  endif()
  target_precompile_headers(${NAME} PRIVATE <gtest/gtest.h> <gmock/gmock.h> <functional> <map> <memory>
    <optional> <string> <vector> ${ARG_PCH})
  add_test(NAME ${NAME} COMMAND ${NAME} --gtest_brief=1)
  set_tests_properties(${NAME} PROPERTIES LABELS "${ARG_LABELS}" TIMEOUT 300 ENVIRONMENT
    "ASAN_OPTIONS=detect_stack_use_after_return=1:strict_string_checks=1;UBSAN_OPTIONS=print_stacktrace=1;TSAN_OPTIONS=halt_on_error=1:second_deadlock_stack=1:suppressions=${CMAKE_SOURCE_DIR}/tests/support/tsan.supp;LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/support/lsan.supp:print_suppressions=0;${ARG_ENVIRONMENT}")
endfunction()

set(QUILLANE_CORE_PCH <algorithm> <cstdint> <functional> <map> <memory> <optional> <set> <string>
  <string_view> <unordered_map> <unordered_set> <utility> <variant> <vector>)
