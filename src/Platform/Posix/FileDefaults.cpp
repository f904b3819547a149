#include "FileDefaults.h"
#include "AtomicFile.h"
#include "Descriptor.h"
#include "FileLock.h"
#include "PropertyListDocument.h"
#include "SpaceReserve.h"
#include "StatusTime.h"
#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <type_traits>
#include <utility>
#include <vector>

namespace quillane {
namespace {

// In the place of the first character of a key: the value counts no longer.
constexpr char kCrossedOut = '~';
constexpr std::size_t kMostTold = 64; // changes of one key that are kept to be made anew
constexpr std::string_view kFolder = "/quillane/";

PropertyList::Value toStored(const Defaults::Value& value) {
    return std::visit(
        [](const auto& held) -> PropertyList::Value {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, Defaults::Data>) {
                return PropertyList::Value(PropertyList::Data{std::string(held.begin(), held.end())});
            } else if constexpr (std::is_same_v<Held, std::vector<std::string>>) {
                PropertyList::Array array;
                for (const auto& text : held) {
                    array.emplace_back(PropertyList::Value::Variant(text));
                }
                return PropertyList::Value(std::move(array));
            } else {
                return PropertyList::Value(PropertyList::Value::Variant(held));
            }
        },
        value);
}

std::optional<PropertyList::Value> toStored(const std::optional<Defaults::Value>& value) {
    return value ? std::optional(toStored(*value)) : std::nullopt;
}

Defaults::Change becoming(std::optional<Defaults::Value> value) {
    return [value = std::move(value)](const std::optional<Defaults::Value>&) { return value; };
}

// Nothing for kinds that settings don't have.
std::optional<Defaults::Value> fromStored(const PropertyList::Value& value) {
    return std::visit(
        [&](const auto& held) -> std::optional<Defaults::Value> {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, PropertyList::Data>) {
                return Defaults::Data(held.bytes.begin(), held.bytes.end());
            } else if constexpr (std::is_same_v<Held, PropertyList::Array>) {
                auto texts = PropertyList::asStringArray(&value);
                return texts ? std::optional<Defaults::Value>(std::move(*texts)) : std::nullopt;
            } else if constexpr (std::is_constructible_v<Defaults::Value, Held> &&
                                 !std::is_same_v<Held, PropertyList::BigNumber>) {
                return Defaults::Value(held);
            } else {
                return std::nullopt;
            }
        },
        value.variant());
}

// The texts of a value, at any depth, as they were before the file's form. Values are no deeper than the limit of
// reading.
PropertyList::Value restored(const PropertyList::Value& value) { // NOLINT(misc-no-recursion)
    if (const auto* text = std::get_if<std::string>(&value.variant())) {
        return PropertyList::Value(PropertyListDocument::restored(*text));
    }
    if (const auto* read = PropertyList::asArray(&value)) {
        PropertyList::Array array;
        for (const auto& element : *read) {
            array.push_back(restored(element));
        }
        return PropertyList::Value(std::move(array));
    }
    if (const auto* read = PropertyList::asDictionary(&value)) {
        std::vector<PropertyList::Entry> entries;
        for (const auto& entry : read->entries()) {
            entries.push_back({PropertyListDocument::restored(entry.key), restored(entry.value)});
        }
        return PropertyList::Value(PropertyList::Dictionary(std::move(entries)));
    }
    return value;
}

bool isMissing(int error) {
    return error == ENOENT || error == ENOTDIR;
}

// Empty for a file that is missing; nothing when it could not be read, for its kind or length too.
std::optional<std::string> readAll(const std::string& path, std::size_t limit) {
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status = {};
    if (!file || ::fstat(file.get(), &status) != 0) {
        return !file && isMissing(errno) ? std::optional<std::string>("") : std::nullopt;
    }
    if (!S_ISREG(status.st_mode) || status.st_size > static_cast<off_t>(limit)) {
        return std::nullopt;
    }
    std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        const auto count = ::read(file.get(), bytes.data() + filled, bytes.size() - filled);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return std::nullopt;
        }
        if (count == 0) {
            break;
        }
        filled += static_cast<std::size_t>(count);
    }
    bytes.resize(filled);
    return bytes;
}

// An empty one is a list too.
bool isList(const std::string& bytes, const PropertyList::Limits& limits) {
    const auto parsed = PropertyList::parse(bytes, limits);
    return parsed.ok() && PropertyList::asDictionary(&parsed.value()) != nullptr;
}

std::string textOf(const std::map<std::string, PropertyList::Value, std::less<>>& values) {
    std::vector<PropertyList::Entry> entries;
    entries.reserve(values.size());
    for (const auto& [key, value] : values) {
        entries.push_back({key, value});
    }
    return PropertyListDocument::text(PropertyList::Dictionary(std::move(entries)));
}

std::size_t sizeInFile(const std::string& key, const std::optional<PropertyList::Value>& value) {
    return value ? textOf({{key, *value}}).size() : 0;
}

template <class Stored, class Changes>
Stored changed(Stored values, const Changes& changes) {
    for (const auto& [key, value] : changes) {
        values.erase(key);
        if (value) {
            values.emplace(key, *value);
        }
    }
    return values;
}

} // namespace

FileDefaults::FileDefaults(std::string path, PropertyList::Limits limits, SpaceReserve* reserve)
    : m_path(std::move(path))
    , m_limits(limits)
    , m_reserve(reserve) {}

std::string FileDefaults::userPath(const std::string& home, std::string_view fileName) {
    const char* config = std::getenv("XDG_CONFIG_HOME"); // NOLINT(concurrency-mt-unsafe): nobody sets it
    const bool usable = config != nullptr && config[0] == '/'; // a relative path is to be ignored
    return (usable ? std::string(config) : home + "/.config").append(kFolder).append(fileName);
}

std::optional<FileDefaults::Stamp> FileDefaults::stampOfFile() const {
    struct stat status = {};
    if (::stat(m_path.c_str(), &status) != 0) {
        return isMissing(errno) ? std::optional(Stamp()) : std::nullopt;
    }
    return Stamp{true, status.st_dev, status.st_ino, status.st_size, modifiedOf(status)};
}

bool FileDefaults::reloadIfChanged() const {
    const auto stamp = stampOfFile();
    if (stamp && stamp == m_stamp) {
        return true;
    }
    const auto bytes = stamp ? readAll(m_path, m_limits.bytes) : std::nullopt;
    if (!bytes) {
        return false;
    }
    m_stamp = stamp;
    auto values = valuesIn(*bytes);
    m_hasLost = m_hasLost || (!m_stored.empty() && values.empty() && !isList(*bytes, m_limits));
    m_stored = std::move(values);
    makeAnew();
    return true;
}

void FileDefaults::makeAnew() const {
    for (const auto& [key, changes] : m_told) {
        const auto stored = m_stored.find(key);
        auto value = stored == m_stored.end() ? std::nullopt : fromStored(stored->second);
        for (const auto& change : changes) {
            value = change(value);
        }
        m_unwritten.insert_or_assign(key, toStored(value));
    }
}

FileDefaults::Stored FileDefaults::valuesIn(const std::string& bytes) const {
    Stored values;
    const auto parsed = PropertyList::parse(bytes, m_limits);
    if (const auto* root = parsed.ok() ? PropertyList::asDictionary(&parsed.value()) : nullptr) {
        for (const auto& entry : root->entries()) {
            if (!entry.key.starts_with(kCrossedOut)) {
                values.emplace(PropertyListDocument::restored(entry.key), restored(entry.value));
            }
        }
    }
    return values;
}

std::optional<Defaults::Value> FileDefaults::ownValue(std::string_view key) const {
    if (const auto unwritten = m_unwritten.find(key); unwritten != m_unwritten.end()) {
        const auto& value = unwritten->second;
        return value ? fromStored(*value) : std::nullopt;
    }
    const auto stored = m_stored.find(key);
    return stored == m_stored.end() ? std::nullopt : fromStored(stored->second);
}

std::optional<Defaults::Value> FileDefaults::value(std::string_view key) const {
    (void)reloadIfChanged();
    const auto unwritten = m_unwritten.find(key);
    if (unwritten == m_unwritten.end() ? m_stored.contains(key) : unwritten->second.has_value()) {
        return ownValue(key);
    }
    const auto found = m_registered.find(key);
    return found == m_registered.end() ? std::nullopt : std::optional(found->second);
}

std::optional<FileDefaults::Draft> FileDefaults::draft() const {
    // Whatever the largest value takes, a quarter of the file is left for the others.
    const std::size_t mostForOne = m_limits.bytes / 4 * 3;
    std::vector<std::pair<std::size_t, std::string_view>> bySize; // the smallest first: as many as fit
    for (const auto& [key, value] : m_unwritten) {
        bySize.emplace_back(sizeInFile(key, value), key);
    }
    std::ranges::sort(bySize);
    Draft draft{.values = withoutMisleading(), .text = {}, .heldBack = {}};
    const bool keepsAll = draft.values.size() == m_stored.size();
    for (const auto& [size, key] : bySize) {
        const auto change = *m_unwritten.find(key);
        auto values = changed(draft.values, Changes{change});
        auto text = size <= mostForOne ? textOf(values) : std::string();
        if (!text.empty() && PropertyList::parse(text, m_limits).ok()) {
            draft.values = std::move(values);
            draft.text = std::move(text);
        } else {
            draft.heldBack.insert(change);
        }
    }
    if (draft.text.empty() && !keepsAll) {
        draft.text = textOf(draft.values);
    }
    return draft.text.empty() ? std::nullopt : std::optional(std::move(draft));
}

FileDefaults::Stored FileDefaults::withoutMisleading() const {
    Stored values = m_stored;
    for (const auto& [key, value] : m_unwritten) {
        if (m_misleading.contains(key)) {
            values.erase(key);
        }
    }
    return values;
}

bool FileDefaults::write(const std::string& text) const {
    struct stat status = {};
    if (::stat(m_path.c_str(), &status) != 0) {
        (void)::stat(m_path.substr(0, m_path.rfind('/')).c_str(), &status);
    }
    const SpaceReserve::Need need{.device = status.st_dev,
                                  .bytes = static_cast<std::int64_t>(text.size()),
                                  .use = SpaceReserve::Use::anything};
    return SpaceReserve::draw(m_reserve, need, [&] { return AtomicFile::write(m_path, text); }).ok();
}

bool FileDefaults::store() {
    if (!reloadIfChanged()) {
        return false; // what can't be read is not written over
    }
    auto wanted = draft();
    if (!wanted || !write(wanted->text)) {
        return false;
    }
    m_stamp = stampOfFile();
    m_stored = std::move(wanted->values);
    m_unwritten = std::move(wanted->heldBack);
    std::erase_if(m_told, [&](const auto& told) { return !m_unwritten.contains(told.first); });
    return true;
}

void FileDefaults::crossOut(const std::string& key) {
    const auto bytes = readAll(m_path, m_limits.bytes);
    const std::string_view tag = "<key>";
    if (!bytes) {
        return;
    }
    const auto at = bytes->find(std::string(tag) + key + "</key>");
    if (at == std::string::npos) {
        return;
    }
    auto without = *bytes;
    without[at + tag.size()] = kCrossedOut;
    auto wanted = valuesIn(*bytes);
    auto left = valuesIn(without);
    // Read as it will be: a file of another hand may hold the same text in another place.
    if (wanted.erase(key) == 1 && left == wanted &&
        AtomicFile::writeByte(m_path, at + tag.size(), kCrossedOut).ok()) {
        m_stored = std::move(left);
        m_stamp = stampOfFile();
    }
}

bool FileDefaults::change(const std::string& key, Change change, Older older, Basis basis) {
    const FileLock lock(m_path + ".lock"); // a file of its own, as the list itself is replaced
    // What is not known to stand there can't be told to be no change.
    const bool isKnown = basis == Basis::stored && reloadIfChanged();
    const auto before = basis == Basis::stored ? ownValue(key) : std::nullopt;
    auto after = change(before);
    if (isKnown && after == before) {
        return false;
    }
    if (basis == Basis::none) {
        m_told.erase(key);
    }
    if (!after) {
        older = Older::goes;
    }
    auto& told = m_told[key];
    told.push_back(std::move(change));
    if (told.size() > kMostTold) {
        told.assign(1, becoming(after));
    }
    m_unwritten.insert_or_assign(key, toStored(after));
    if (older == Older::goes) {
        m_misleading.insert(key);
    } else {
        m_misleading.erase(key);
    }
    if (!store() && older == Older::goes) {
        crossOut(key);
    }
    return true;
}

void FileDefaults::set(std::string_view key, Value value) {
    (void)change(std::string(key), becoming(std::move(value)), Older::stays, Basis::none);
    tell(std::string(key));
}

void FileDefaults::setOrForget(std::string_view key, Value value) {
    (void)change(std::string(key), becoming(std::move(value)), Older::goes, Basis::none);
    tell(std::string(key));
}

void FileDefaults::clear(std::string_view key) {
    (void)change(std::string(key), becoming(std::nullopt), Older::goes, Basis::none);
    tell(std::string(key));
}

void FileDefaults::update(std::string_view key, Change change) {
    if (this->change(std::string(key), std::move(change), Older::stays, Basis::stored)) {
        tell(std::string(key));
    }
}

void FileDefaults::updateOrForget(std::string_view key, Change change) {
    if (this->change(std::string(key), std::move(change), Older::goes, Basis::stored)) {
        tell(std::string(key));
    }
}

bool FileDefaults::hasLost() const {
    (void)reloadIfChanged();
    return m_hasLost;
}

void FileDefaults::registerDefaults(const std::map<std::string, Value>& values) {
    for (const auto& [key, value] : values) {
        m_registered.insert_or_assign(key, value);
    }
}

Defaults::SubscriptionId FileDefaults::subscribe(std::function<void(const std::string& key)> changed) {
    m_subscribers.emplace(++m_lastSubscription, std::move(changed));
    return m_lastSubscription;
}

void FileDefaults::unsubscribe(SubscriptionId id) {
    m_subscribers.erase(id);
}

void FileDefaults::tell(const std::string& key) {
    const auto subscribers = m_subscribers; // one may leave or join meanwhile
    for (const auto& [id, changed] : subscribers) {
        if (m_subscribers.contains(id)) {
            changed(key);
        }
    }
}

} // namespace quillane
