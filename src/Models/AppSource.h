#pragma once
#include <array>
#include <compare>
#include <optional>
#include <string_view>

namespace quillane {

// Where an application bundle lies.
enum class AppSource { system, applications, userApplications, other };

inline constexpr std::array kAllAppSources = {AppSource::system, AppSource::applications,
                                              AppSource::userApplications, AppSource::other};

// The words shown to the user, such as "Applications".
std::string_view rawValue(AppSource source);
std::optional<AppSource> appSourceFromRawValue(std::string_view text);

// Ordered by the words, not by declaration.
std::strong_ordering operator<=>(AppSource a, AppSource b);

} // namespace quillane
