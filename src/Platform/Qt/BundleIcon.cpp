#include "BundleIcon.h"
#include "PropertyList.h"
#include "TextComparison.h"
#include <vector>

namespace quillane {
namespace {

constexpr std::size_t kMostListBytes = std::size_t{1} << 20U;
constexpr std::string_view kExtension = ".icns";

// The name of a file of the resources, and of nothing else: the list is not ours.
bool isPlainName(const std::string& name) {
    return !name.empty() && name != "." && name != ".." && name.find('/') == std::string::npos &&
           name.find('\0') == std::string::npos;
}

// The names that the property list gives, best first.
std::vector<std::string> namedIcons(const FileSystem& files, const FileURL& bundle) {
    const auto bytes = files.read(bundle.appending("Contents/Info.plist"), kMostListBytes);
    if (!bytes) {
        return {};
    }
    const auto list = PropertyList::parse(*bytes);
    if (!list) {
        return {};
    }
    const auto* const dictionary = PropertyList::asDictionary(&*list);
    if (dictionary == nullptr) {
        return {};
    }
    std::vector<std::string> names;
    for (const auto* const key : {"CFBundleIconFile", "CFBundleIconName"}) {
        const auto name = PropertyList::asString(dictionary->find(key));
        if (name && isPlainName(*name)) {
            names.push_back(pathExtensionOf(*name).empty() ? *name + std::string(kExtension) : *name);
        }
    }
    return names;
}

// Other containers are icons of documents, so with several of them none is taken at random.
std::optional<std::string> onlyIcon(const FileSystem& files, const FileURL& resources) {
    const auto entries = files.list(resources);
    if (!entries) {
        return std::nullopt;
    }
    std::vector<std::string> names;
    for (const auto& entry : *entries) {
        if (entry.type == EntryType::regular &&
            Text::equalIgnoringCase(pathExtensionOf(entry.name), "icns")) {
            names.push_back(entry.name);
        }
    }
    if (names.size() == 1) {
        return names.front();
    }
    for (const auto& name : names) {
        if (Text::equalIgnoringCase(name, "AppIcon.icns")) {
            return name;
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> bundleIcon(const FileSystem& files, const FileURL& bundle) {
    const auto resources = bundle.appending("Contents/Resources");
    for (const auto& name : namedIcons(files, bundle)) {
        if (auto bytes = files.read(resources.appending(name), kMostIconBytes)) {
            return std::move(bytes).value();
        }
    }
    const auto name = onlyIcon(files, resources);
    auto bytes = name ? files.read(resources.appending(*name), kMostIconBytes) : PlatformError{};
    return bytes ? std::optional(std::move(bytes).value()) : std::nullopt;
}

} // namespace quillane
