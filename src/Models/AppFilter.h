#pragma once
#include <array>
#include <string_view>

namespace quillane {

// Which applications the queries show.
enum class AppFilter { all, thirdParty, rosetta, unused, large };

inline constexpr std::array kAllAppFilters = {AppFilter::all, AppFilter::thirdParty, AppFilter::rosetta,
                                              AppFilter::unused, AppFilter::large};

// The label, such as "Third-Party".
std::string_view rawValue(AppFilter filter);

} // namespace quillane
