# The oldest macOS on which Quillane runs. Nothing else says it: the bundle, the checks and the documents take it from here.
set(CMAKE_OSX_DEPLOYMENT_TARGET 13.0)
