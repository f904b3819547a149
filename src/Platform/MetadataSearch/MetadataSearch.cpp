#include "MetadataSearch.h"
#include "IndexedItem.h"
#include "PathWalk.h"
#include <algorithm>
#include <array>
#include <cmath>
#include <ctime>
#include <optional>

namespace quillane {
namespace {

// Directly below "/": programs, devices and passing things.
constexpr std::string_view kSystemFolders[] = {"bin",   "boot", "cores",   "dev",  "etc", "lib",
                                               "lib64", "opt",  "private", "proc", "run", "sbin",
                                               "sys",   "tmp",  "usr",     "var"};

bool isWithoutCase(std::string_view text, std::string_view lower) {
    return std::ranges::equal(text, lower,
                              [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b; });
}

std::string printed(Date date) {
    const auto seconds = static_cast<std::time_t>(std::floor(date.secondsSince1970()));
    std::tm parts{};
    std::array<char, 64> text{};
    if (::gmtime_r(&seconds, &parts) == nullptr) {
        return "(null)";
    }
    return std::string(text.data(),
                       std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S +0000", &parts));
}

std::string printed(std::span<const std::string_view> members) {
    std::string text = "(\n";
    for (const auto member : members) {
        text.append("    \"").append(member).append(member.data() == members.back().data() ? "\"\n"
                                                                                           : "\",\n");
    }
    return text + ")";
}

struct Printer {
    std::string operator()(std::monostate) const { return "(null)"; }
    std::string operator()(std::string_view text) const { return std::string(text); }
    std::string operator()(std::span<const std::string_view> members) const { return printed(members); }
    std::string operator()(Bytes bytes) const { return std::to_string(bytes); }
    std::string operator()(Date date) const { return printed(date); }
};

// Content can be searched and is never told.
std::string printed(IndexedItem& item, const std::string& attributeName) {
    const auto attribute = metadataAttributeNamed(attributeName);
    if (attribute == MetadataAttribute::unknown || attribute == MetadataAttribute::textContent) {
        return "(null)";
    }
    return std::visit(Printer(), item.value(attribute));
}

} // namespace

struct MetadataSearch::Request {
    std::vector<FileURL> folders;
    bool isOnlyIn = false;
    std::vector<std::string> attributes;
    char end = '\n';
    std::string query;

    static std::optional<Request> from(const std::vector<std::string>& arguments) {
        Request request;
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            const auto& argument = arguments[i];
            const bool hasNext = i + 1 < arguments.size();
            if (argument == "-0") {
                request.end = '\0';
            } else if (argument == "-onlyin" && hasNext) {
                request.addFolder(arguments[++i]);
            } else if (argument == "-attr" && hasNext) {
                request.attributes.push_back(arguments[++i]);
            } else if (argument.starts_with('-')) {
                return std::nullopt;
            } else {
                request.query += (request.query.empty() ? "" : " ") + argument;
            }
        }
        return request.query.empty() ? std::nullopt : std::optional(std::move(request));
    }

  private:
    // There is no working directory here that a relative path could begin at.
    void addFolder(const std::string& path) {
        isOnlyIn = true;
        if (path.starts_with('/')) {
            folders.emplace_back(path);
        }
    }
};

struct MetadataSearch::Hits {
    std::vector<std::string> lines;
    TextBudget budget;

    std::string joined(char end) {
        std::ranges::sort(lines);
        lines.erase(std::ranges::unique(lines).begin(), lines.end()); // folders may lie within one another
        std::string text;
        for (const auto& line : lines) {
            text += line;
            text += end;
        }
        return text;
    }
};

MetadataSearch::MetadataSearch(const FileSystem& files, const Metadata& metadata, const Clock& clock,
                               std::vector<FileURL> roots, SearchHelpers helpers)
    : m_files(files)
    , m_metadata(metadata)
    , m_clock(clock)
    , m_roots(std::move(roots))
    , m_helpers(helpers)
    , m_home(files.home().path()) {}

std::string MetadataSearch::answer(const std::vector<std::string>& arguments) const {
    const auto request = Request::from(arguments);
    if (!request) {
        return {};
    }
    const auto query = MetadataQuery::parse(request->query, m_clock.now());
    if (!query) {
        return "Failed to create query for '" + request->query + "'.\n";
    }
    Hits hits;
    for (const auto& folder : request->isOnlyIn ? request->folders : m_roots) {
        search(folder, *request, *query, hits);
    }
    return hits.joined(request->end);
}

void MetadataSearch::search(FileURL root, const Request& request, const MetadataQuery& query,
                            Hits& hits) const {
    root = m_files.standardized(root);
    const auto values = m_files.resourceValues(root);
    if (values && values->type == EntryType::symbolicLink) {
        root = m_files.resolvingSymlinks(root); // the index knows things by where they really are
    }
    if (!isIndexed(root)) {
        return;
    }
    walkPaths(m_files, root, [&](const std::string& path, const DirectoryEntry& entry) {
        const auto parent = std::string_view(path).substr(0, path.size() - entry.name.size() - 1);
        if (isLeftOut(parent, entry.name, entry.type)) {
            return false;
        }
        const auto& type = contentType(path, entry.name, entry.type);
        IndexedItem item(m_files, m_metadata, m_helpers.documents, hits.budget, path, entry.type, type);
        if (query.matches(item)) {
            auto& line = hits.lines.emplace_back(path);
            for (const auto& attribute : request.attributes) {
                line.append("   ").append(attribute).append(" = ").append(printed(item, attribute));
            }
        }
        return !type.isPackage();
    });
}

// Whether the folder and everything that it lies in is known to the index. Folders of the system count: who
// names one of them is answered.
bool MetadataSearch::isIndexed(const FileURL& folder) const {
    for (FileURL url = folder; url.path() != "/"; url = url.deletingLastPathComponent()) {
        const auto name = url.lastPathComponent();
        if (isLeftOut(url.deletingLastPathComponent().path(), name, EntryType::directory) ||
            contentType(url.path(), name, EntryType::directory).isPackage()) {
            return false;
        }
    }
    return true;
}

// `parent` is empty for what a walk of "/" meets first.
bool MetadataSearch::isLeftOut(std::string_view parent, std::string_view name, EntryType type) const {
    if (name.starts_with('.')) {
        return true;
    }
    if (type != EntryType::directory) {
        return false;
    }
    if (parent.empty()) {
        return std::ranges::find(kSystemFolders, name) != std::end(kSystemFolders);
    }
    if (name == "Library") {
        constexpr std::string_view kUsers = "/Users/";
        const bool isOfUser =
            parent.starts_with(kUsers) && parent.find('/', kUsers.size()) == std::string_view::npos;
        return isOfUser || parent == m_home;
    }
    return isWithoutCase(pathExtensionOf(name), "noindex");
}

const ContentType& MetadataSearch::contentType(const std::string& path, std::string_view name,
                                               EntryType entryType) const {
    switch (entryType) {
    case EntryType::regular:
        return ContentTypes::ofFile(pathExtensionOf(name));
    case EntryType::symbolicLink:
        return ContentTypes::symbolicLink();
    case EntryType::other:
        return ContentTypes::otherItem();
    case EntryType::directory:
        break;
    }
    const auto& type = ContentTypes::ofFolder(pathExtensionOf(name));
    if (type.is("com.apple.application-bundle") && !m_files.exists(FileURL(path + "/Contents/Info.plist"))) {
        return ContentTypes::folder();
    }
    return type;
}

} // namespace quillane
