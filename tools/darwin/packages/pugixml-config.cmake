# Stands in for the package on a Mac; see cmake/Darwin.cmake.
add_library(pugixml::pugixml INTERFACE IMPORTED)
target_include_directories(pugixml::pugixml SYSTEM INTERFACE ${QUILLANE_SDK}/packages/include)
target_link_libraries(pugixml::pugixml INTERFACE ${QUILLANE_SDK}/packages/lib/libpugixml.tbd)
