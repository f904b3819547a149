# Whatever this machine has is what there is.
set(PACKAGE_VERSION 6)
set(PACKAGE_VERSION_COMPATIBLE TRUE)
