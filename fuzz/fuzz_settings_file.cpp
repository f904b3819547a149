#include "FileDefaults.h"
#include "TemporaryFolder.h"
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <map>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <type_traits>
#include <unistd.h>

using namespace quillane;

namespace {

constexpr std::string_view kOurs = "protectedPaths";

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

// Not by way of the code under test.
void lay(const std::string& path, std::string_view text) {
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    require(file >= 0 && ::write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size()) &&
            ::close(file) == 0);
}

std::string contentOf(const std::string& path) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status = {};
    require(file >= 0 && ::fstat(file, &status) == 0);
    std::string text(static_cast<std::size_t>(status.st_size), '\0');
    require(::read(file, text.data(), text.size()) == status.st_size && ::close(file) == 0);
    return text;
}

// Dates are kept to the second. All that is no number is one.
bool isSame(const Defaults::Value& before, const Defaults::Value& after) {
    if (before.index() != after.index()) {
        return false;
    }
    if (const auto* date = std::get_if<Date>(&before)) {
        return std::floor(date->secondsSince1970()) == std::get<Date>(after).secondsSince1970();
    }
    if (const auto* real = std::get_if<double>(&before)) {
        const double other = std::get<double>(after);
        return std::isnan(*real) ? std::isnan(other)
                                 : std::bit_cast<std::uint64_t>(*real) == std::bit_cast<std::uint64_t>(other);
    }
    return before == after;
}

// A date of which no calendar knows need not be kept; everything else must be, whatever the file held.
bool mayChange(const Defaults::Value& value) {
    constexpr double kFarAway = 1e15; // in seconds, some 30 million years
    const auto* date = std::get_if<Date>(&value);
    return date != nullptr && !(std::fabs(date->secondsSinceReferenceDate) < kFarAway);
}

// What the settings tell under each key of the list that the file holds.
std::map<std::string, Defaults::Value> valuesOf(const FileDefaults& defaults, std::string_view text) {
    std::map<std::string, Defaults::Value> values;
    const auto list = PropertyList::parse(text);
    const auto* root = list ? PropertyList::asDictionary(&*list) : nullptr;
    for (const auto& entry : root != nullptr ? root->entries() : std::vector<PropertyList::Entry>()) {
        (void)defaults.boolean(entry.key);
        (void)defaults.integer(entry.key);
        if (auto value = defaults.value(entry.key); value && entry.key != kOurs) {
            values.emplace(entry.key, std::move(*value));
        }
    }
    return values;
}

void requireKept(const std::map<std::string, Defaults::Value>& values, const FileDefaults& defaults) {
    for (const auto& [key, before] : values) {
        const auto after = defaults.value(key);
        require(mayChange(before) || (after && isSame(before, *after)));
    }
}

} // namespace

// The input is the file that is found, and a path that is stored in it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static const TemporaryFolder folder;
    static const std::string path = folder.path() + "/defaults.plist";
    const std::string input(reinterpret_cast<const char*>(bytes), size);
    const Defaults::Value stored(std::vector<std::string>{input, "/" + input});
    lay(path, input);
    FileDefaults defaults(path);
    const auto values = valuesOf(defaults, input);
    defaults.set(kOurs, stored);

    FileDefaults next(path);
    require(next.value(kOurs) == stored);
    requireKept(values, next);
    const auto text = contentOf(path);
    next.set(kOurs, stored);
    require(contentOf(path) == text); // what was written once is written no differently again
    return 0;
}
