#pragma once
#include <cstdint>
#include <string_view>
#include <vector>

namespace quillane {

class Defaults;
class Picker;
class Stepper;
class Switch;

// Ties a control to its key in the defaults, both ways: what the user does is stored at once, and what another hand
// stores shows at once. Showing never writes. The defaults outlive the control; keys are constants. Main thread only.
namespace KeyBinding {

void bind(Switch& control, Defaults& defaults, std::string_view key);
// A stored figure beyond the stepper's ends is shown at the nearer end and stays as it is until the user steps.
void bind(Stepper& control, Defaults& defaults, std::string_view key);
// `values` stand for the choices, in their order. A stored value that is none of them chooses nothing, and stays.
void bind(Picker& control, Defaults& defaults, std::string_view key, const std::vector<std::int64_t>& values);

} // namespace KeyBinding

} // namespace quillane
