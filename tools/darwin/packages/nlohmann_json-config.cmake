# Stands in for the package on a Mac; see cmake/Darwin.cmake.
add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED)
target_include_directories(nlohmann_json::nlohmann_json SYSTEM INTERFACE ${QUILLANE_SDK}/packages/include)
