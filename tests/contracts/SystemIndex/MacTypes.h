#pragma once
// The types that the declarations of the Mac's frameworks begin with, for a trial on another system.
using UInt8 = unsigned char;
using UInt32 = unsigned int;
using Boolean = unsigned char;
