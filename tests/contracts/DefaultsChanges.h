#pragma once
#include "Defaults.h"
#include <optional>
#include <string>
#include <variant>
#include <vector>

// Changes that tests tell.
namespace quillane {

// What is stored, with this added.
inline Defaults::Change adding(const std::string& text) {
    return [text](const std::optional<Defaults::Value>& stored) {
        auto texts = stored ? std::get<std::vector<std::string>>(*stored) : std::vector<std::string>();
        texts.push_back(text);
        return std::optional<Defaults::Value>(texts);
    };
}

inline std::optional<Defaults::Value> nothing(const std::optional<Defaults::Value>& /*stored*/) {
    return std::nullopt;
}

} // namespace quillane
