# How everything is compiled: one standard, one set of warnings, one linker, one cache.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_OBJCXX_STANDARD 20)
set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
set(CMAKE_OBJCXX_EXTENSIONS OFF)
add_compile_options($<$<AND:$<COMPILE_LANGUAGE:OBJCXX>,$<PLATFORM_ID:Darwin>>:-fobjc-arc>)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  message(FATAL_ERROR "Quillane is built with clang: GCC 12 miscompiles coroutines. Use a preset, or ./test.")
endif()

find_program(QUILLANE_CCACHE ccache)
if(QUILLANE_CCACHE)
  # The cache is shared between checkouts, so paths below the checkout do not take part in the key.
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
      CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${QUILLANE_CCACHE})
  set(CMAKE_OBJCXX_COMPILER_LAUNCHER ${CMAKE_CXX_COMPILER_LAUNCHER})
endif()

add_compile_options(-fno-omit-frame-pointer)
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  # A precompiled header that does not carry its time can come from the cache.
  add_compile_options("SHELL:$<$<COMPILE_LANGUAGE:CXX,OBJCXX>:-Xclang -fno-pch-timestamp>")
  if(CMAKE_BUILD_TYPE STREQUAL "Debug")
    add_compile_options(-gline-tables-only)
  endif()
endif()
if(NOT APPLE)
  add_link_options(-fuse-ld=lld)
  if(CMAKE_BUILD_TYPE STREQUAL "Release")
    # What Debian asks of what it ships.
    add_compile_options(-fstack-protector-strong -D_FORTIFY_SOURCE=2)
    add_link_options(-Wl,-z,relro,-z,now,--as-needed)
  endif()
endif()
if(QUILLANE_LIBCXX)
  add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-stdlib=libc++>)
  add_link_options(-stdlib=libc++)
endif()
if(QUILLANE_SANITIZE)
  add_compile_options(-fsanitize=${QUILLANE_SANITIZE} -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${QUILLANE_SANITIZE})
endif()

# Warnings apply to what we wrote and are errors, but for a compiler of which nobody has seen yet what it warns of.
add_library(quillane_warnings INTERFACE)
target_compile_options(quillane_warnings INTERFACE
  $<$<NOT:$<CXX_COMPILER_ID:AppleClang>>:-Werror> -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wnon-virtual-dtor
  -Woverloaded-virtual -Wimplicit-fallthrough -Wextra-semi
  # The stable sort of GCC 12's library calls what the same library deprecates.
  -Wno-deprecated-declarations
  # Selectors and overriding methods that the system would not know.
  $<$<COMPILE_LANGUAGE:OBJCXX>:-Wundeclared-selector>
  $<$<COMPILE_LANGUAGE:OBJCXX>:-Woverriding-method-mismatch>
  # What the oldest macOS that we run on lacks.
  $<$<PLATFORM_ID:Darwin>:-Wunguarded-availability>)
