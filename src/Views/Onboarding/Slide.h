#pragma once
#include "Components/Tint.h"
#include <QString>
#include <optional>
#include <vector>

namespace quillane {

// One page of the welcome: what it shows and says.
struct Slide {
    std::optional<QString> symbol; // absent on the page that shows the program's mark
    QString title;
    QString body;
    Tint accent; // of the symbol and its tile
};

// The pages of the welcome, in order.
const std::vector<Slide>& welcomeSlides();

} // namespace quillane
