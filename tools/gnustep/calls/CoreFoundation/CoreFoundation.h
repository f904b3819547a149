#pragma once
#include <CoreFoundation/CFBase.h>
