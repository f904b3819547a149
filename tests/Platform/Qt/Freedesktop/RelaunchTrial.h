#pragma once
#include <optional>
#include <string>

// A program that relaunches itself, tried with processes. Each start tells what it is in lines of its standard output:
// "began" or "began again", and then "first", "second" or "unheard". The first one relaunches itself and ends once its
// standard input does; the one that comes of that ends at once.
namespace quillane::RelaunchTrial {

// The trial's settings file is named in this variable of the environment; without it there is no trial.
inline constexpr const char* kSettings = "QUILLANE_RELAUNCH_TRIAL";

// In the test program, before all else: the status of a start of the trial.
std::optional<int> answer(int argc, char** argv);

} // namespace quillane::RelaunchTrial
