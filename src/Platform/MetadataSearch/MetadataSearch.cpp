#include "MetadataSearch.h"
#include "Crew.h"
#include "IndexedItem.h"
#include "WalkedPaths.h"
#include <algorithm>
#include <array>
#include <cmath>
#include <ctime>
#include <optional>
#include <utility>
#include <variant>

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

constexpr int kReaders = 4; // threads, if the machine has as many to spare
constexpr std::size_t kItemsAtOnce = 16;

// Calls `work` with the beginning of each so many items, side by side where there are threads.
template <class Work>
void shareOut(std::size_t count, std::size_t atOnce, TaskRunner* threads, int helpers, const Work& work) {
    std::vector<std::size_t> beginnings;
    for (std::size_t begin = 0; begin < count; begin += atOnce) {
        beginnings.push_back(begin);
    }
    if (threads != nullptr) {
        Crew<std::size_t>::run(*threads, Priority::userInitiated, helpers, std::move(beginnings), work);
        return;
    }
    for (const auto begin : beginnings) {
        work(begin, std::monostate());
    }
}

} // namespace

struct MetadataSearch::Request {
    std::vector<FileURL> folders;
    bool isOnlyIn = false;
    std::vector<std::string> attributes;
    char end = '\n';
    std::string query;

    // A line feed in a name would end its line.
    bool canPrint(std::string_view name) const { return name.find(end) == std::string_view::npos; }

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

// What the walk found and could not decide on.
struct MetadataSearch::Undecided {
    std::string path;
    EntryType type;
    const ContentType* contentType;
    DocumentKind kind;
};

struct MetadataSearch::Search {
    const Request& request;
    const MetadataQuery& query;
    ItemSource source;
    std::vector<std::string> lines = {};
    std::vector<Undecided> undecided = {};
    std::vector<Undecided> costly = {};

    std::string line(IndexedItem& item, std::string_view path) const {
        std::string text(path);
        for (const auto& attribute : request.attributes) {
            text.append("   ").append(attribute).append(" = ").append(printed(item, attribute));
        }
        return text;
    }

    // Empty where the item does not answer the query.
    std::string decidedLine(const Undecided& found) const {
        IndexedItem item(source, found.path, found.type, *found.contentType, IndexedItem::Content::now,
                         nullptr, found.kind);
        return query.matches(item) ? line(item, found.path) : std::string();
    }

    void add(std::vector<std::string> decided) {
        for (auto& line : decided) {
            if (!line.empty()) {
                lines.push_back(std::move(line));
            }
        }
    }

    // Lines come in any order and stand in that of their bytes.
    std::string joined() {
        std::ranges::sort(lines);
        lines.erase(std::ranges::unique(lines).begin(), lines.end()); // folders may lie within one another
        std::string text;
        for (const auto& line : lines) {
            text += line;
            text += request.end;
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

std::string MetadataSearch::answer(const std::vector<std::string>& arguments, const StopToken& stop) const {
    const auto request = Request::from(arguments);
    if (!request) {
        return {};
    }
    const auto query = MetadataQuery::parse(request->query, m_clock.now());
    if (!query) {
        return "Failed to create query for '" + request->query + "'.\n";
    }
    Search search{*request, *query, {m_files, m_metadata, m_helpers.documents, stop}};
    for (const auto& folder : request->isOnlyIn ? request->folders : m_roots) {
        walk(folder, search);
    }
    decide(search.undecided, search);
    decideCostly(search.costly, search);
    return search.joined();
}

void MetadataSearch::walk(FileURL root, Search& search) const {
    root = m_files.standardized(root);
    const auto values = m_files.resourceValues(root);
    if (values && values->type == EntryType::symbolicLink) {
        root = m_files.resolvingSymlinks(root); // the index knows things by where they really are
    }
    if (search.source.stop.stopRequested() || !isIndexed(root) || !search.request.canPrint(root.path())) {
        return;
    }
    WalkedPaths paths(root);
    const auto visit = [&](const WalkEntry& entry) {
        if (search.source.stop.stopRequested()) {
            return WalkAnswer::stop;
        }
        paths.tell(entry);
        return look(entry, paths.path(), search);
    };
    static_cast<void>(m_files.walk(root, {}, visit)); // what can't be listed is skipped
}

// Whether a folder is entered; the answer counts for nothing else.
WalkAnswer MetadataSearch::look(const WalkEntry& entry, const std::string& path, Search& search) const {
    const auto parent = std::string_view(path).substr(0, path.size() - entry.name.size() - 1);
    if (isLeftOut(parent, entry.name, entry.type) || !search.request.canPrint(entry.name)) {
        return WalkAnswer::skipBelow;
    }
    const auto& type = contentType(path, entry.name, entry.type);
    IndexedItem item(search.source, path, entry.type, type, IndexedItem::Content::later, &entry);
    const auto answer = search.query.answer(item);
    if (answer == MetadataAnswer::yes) {
        search.lines.push_back(search.line(item, path));
    } else if (answer == MetadataAnswer::later) {
        auto& later = isCostly(item.kind()) ? search.costly : search.undecided;
        later.push_back({path, entry.type, &type, item.kind()});
    }
    return type.isPackage() ? WalkAnswer::skipBelow : WalkAnswer::proceed;
}

// Each worker writes places of its own.
void MetadataSearch::decide(const std::vector<Undecided>& items, Search& search) const {
    std::vector<std::string> lines(items.size());
    const auto decideFrom = [&](std::size_t begin, const auto& /*others*/) {
        const auto end = std::min(begin + kItemsAtOnce, items.size());
        for (auto i = begin; i < end && !search.source.stop.stopRequested(); ++i) {
            lines[i] = search.decidedLine(items[i]);
        }
    };
    shareOut(items.size(), kItemsAtOnce, m_helpers.threads, kReaders - 1, decideFrom);
    search.add(std::move(lines));
}

void MetadataSearch::decideCostly(const std::vector<Undecided>& items, Search& search) const {
    std::vector<std::string> lines(items.size());
    const auto begin = m_clock.instant();
    const auto latest = begin + m_costlyTime.left(search.source.stop);
    const auto decideOne = [&](std::size_t i, const auto& /*others*/) {
        if (m_clock.instant() < latest && !search.source.stop.stopRequested()) {
            lines[i] = search.decidedLine(items[i]);
        }
    };
    shareOut(items.size(), 1, m_helpers.threads, kCostlyAtOnce - 1, decideOne);
    m_costlyTime.spend(search.source.stop, m_clock.instant() - begin);
    search.add(std::move(lines));
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
