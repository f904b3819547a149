#pragma once
#define API_AVAILABLE(...)
