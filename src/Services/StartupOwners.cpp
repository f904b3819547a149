#include "StartupOwners.h"
#include "Characters.h"
#include "HomePath.h"
#include "VendorPrefix.h"
#include <algorithm>
#include <utility>

namespace quillane {
namespace {

constexpr std::string_view kSystemPrefix = "com.apple.";
constexpr const char* kSystemName = "macOS";
constexpr const char* kSameVendor = " (same vendor)";

// Whether the text is the beginning followed by this mark, and perhaps by more.
bool goesOn(std::string_view text, std::string_view beginning, char mark) {
    return text.size() > beginning.size() && text[beginning.size()] == mark && text.starts_with(beginning);
}

} // namespace

StartupOwners::StartupOwners(const std::vector<InstalledApp>& apps, FileURL home)
    : m_apps(apps)
    , m_home(std::move(home)) {
    for (const auto& app : apps) {
        if (app.bundleIdentifier) {
            m_identified.push_back({&app, Text::lowercased(*app.bundleIdentifier)});
        }
    }
}

StartupOwners::Claim StartupOwners::ownerName(const std::string& label,
                                              const std::optional<std::string>& program) const {
    if (const auto* const app = owner(label, program)) {
        return {app->name, true};
    }
    const auto comparable = Text::lowercased(label);
    if (const auto* const app = ownerOfVendor(comparable)) {
        return {app->name + kSameVendor, true};
    }
    if (comparable.starts_with(kSystemPrefix)) {
        return {kSystemName, true};
    }
    return {};
}

const InstalledApp* StartupOwners::owner(const std::string& label,
                                         const std::optional<std::string>& program) const {
    const auto* const ofProgram = program ? ownerOfProgram(*program) : nullptr;
    return ofProgram != nullptr ? ofProgram : ownerOfLabel(Text::lowercased(label));
}

const InstalledApp* StartupOwners::vendorOwner(const std::string& label) const {
    return ownerOfVendor(Text::lowercased(label));
}

const InstalledApp* StartupOwners::ownerOfProgram(const std::string& program) const {
    const auto path = expandingTilde(program, m_home);
    const auto found = std::ranges::find_if(
        m_apps, [&](const InstalledApp& app) { return goesOn(path, app.url.path(), '/'); });
    return found == m_apps.end() ? nullptr : &*found;
}

const InstalledApp* StartupOwners::ownerOfLabel(std::string_view label) const {
    const auto found = std::ranges::find_if(m_identified, [&](const Identified& candidate) {
        return label == candidate.identifier || goesOn(label, candidate.identifier, '.');
    });
    return found == m_identified.end() ? nullptr : found->app;
}

const InstalledApp* StartupOwners::ownerOfVendor(std::string_view label) const {
    const auto prefix = vendorPrefix(label);
    if (!prefix) {
        return nullptr;
    }
    const auto found = std::ranges::find_if(m_identified, [&](const Identified& candidate) {
        return goesOn(candidate.identifier, *prefix, '.');
    });
    return found == m_identified.end() ? nullptr : found->app;
}

} // namespace quillane
