#include "Settings/KeyBinding.h"
#include "Components/Picker.h"
#include "Components/Stepper.h"
#include "Components/Switch.h"
#include "Defaults.h"
#include "Settings/KeyObserver.h"
#include <algorithm>
#include <functional>

namespace quillane {

namespace {

int nearest(const Stepper& control, std::int64_t stored) {
    return static_cast<int>(std::clamp<std::int64_t>(stored, control.minimum(), control.maximum()));
}

int indexIn(const std::vector<std::int64_t>& values, std::int64_t stored) {
    const auto found = std::ranges::find(values, stored);
    return found == values.end() ? -1 : static_cast<int>(found - values.begin());
}

// Shows what is stored, now and after each change.
void follow(QObject& control, Defaults& defaults, std::string_view key, const std::function<void()>& show) {
    show();
    new KeyObserver(defaults, key, show, &control);
}

} // namespace

void KeyBinding::bind(Switch& control, Defaults& defaults, std::string_view key) {
    follow(control, defaults, key, [&control, &defaults, key] { control.setChecked(defaults.boolean(key)); });
    QObject::connect(&control, &Switch::toggled, &control, [&defaults, key](bool isOn) {
        if (isOn != defaults.boolean(key)) { // else it only shows what is stored
            defaults.set(key, isOn);
        }
    });
}

void KeyBinding::bind(Stepper& control, Defaults& defaults, std::string_view key) {
    const auto stored = [&control, &defaults, key] { return nearest(control, defaults.integer(key)); };
    follow(control, defaults, key, [&control, stored] { control.setValue(stored()); });
    QObject::connect(&control, &Stepper::valueChanged, &control, [&defaults, key, stored](int value) {
        if (value != stored()) {
            defaults.set(key, std::int64_t{value});
        }
    });
}

void KeyBinding::bind(Picker& control, Defaults& defaults, std::string_view key,
                      const std::vector<std::int64_t>& values) {
    follow(control, defaults, key, [&control, &defaults, key, values] {
        control.setCurrentIndex(indexIn(values, defaults.integer(key)));
    });
    QObject::connect(&control, &Picker::currentIndexChanged, &control, [&defaults, key, values](int index) {
        if (index >= 0 && index != indexIn(values, defaults.integer(key))) {
            defaults.set(key, values.at(static_cast<std::size_t>(index)));
        }
    });
}

} // namespace quillane
