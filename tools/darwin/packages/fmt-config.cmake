# Stands in for the package on a Mac; see cmake/Darwin.cmake.
add_library(fmt::fmt-header-only INTERFACE IMPORTED)
target_include_directories(fmt::fmt-header-only SYSTEM INTERFACE ${QUILLANE_SDK}/packages/include)
target_compile_definitions(fmt::fmt-header-only INTERFACE FMT_HEADER_ONLY=1)
