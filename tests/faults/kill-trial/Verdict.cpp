#include "Verdict.h"
#include "DefaultsKeys.h"
#include "FileDefaults.h"
#include "StoredRecords.h"
#include "TrashInfo.h"
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sys/stat.h>

namespace quillane {
namespace {

namespace fs = std::filesystem;

std::string textOf(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<std::string> namesIn(const fs::path& folder) {
    std::error_code missing;
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder, missing)) {
        names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    return names;
}

bool isSameKind(const Piece& a, const Piece& b) {
    return (a.mode & S_IFMT) == (b.mode & S_IFMT);
}

// What is stored under a key after so many writes.
std::optional<Defaults::Value> valueAfter(std::int64_t writes, std::int64_t key) {
    for (auto number = writes; number > std::max<std::int64_t>(0, writes - kKeysOfWrites); --number) {
        if (number % kKeysOfWrites == key) {
            return valueOfWrite(number);
        }
    }
    return std::nullopt;
}

bool holdsWrites(const FileDefaults& defaults, std::int64_t writes) {
    for (std::int64_t key = 0; key < kKeysOfWrites; ++key) {
        if (defaults.value(keyOfWrite(key)) != valueAfter(writes, key)) {
            return false;
        }
    }
    return true;
}

} // namespace

Verdict::Verdict(TrialHome& home, Stored& stored, const Plan& plan, const Progress& progress, Tally& tally)
    : m_home(home)
    , m_stored(stored)
    , m_plan(plan)
    , m_progress(progress)
    , m_tally(tally) {
    followPlan();
    lookIntoTrash();
    lookAtHome();
    checkItems();
    checkSettings();
    countMiddles();
    takeOver();
}

void Verdict::followPlan() {
    for (auto& item : m_home.items()) {
        m_places[&item] = {
            .home = item.isAtHome(), .trash = !item.isAtHome(), .gone = false, .remainder = false};
    }
    for (int i = 0; i < m_progress.begun; ++i) {
        const auto& step = m_plan.steps[static_cast<std::size_t>(i)];
        const bool hasEnded = i < m_progress.ended;
        if (step.kind == Step::Kind::sweep) {
            followSweep(step, hasEnded);
        } else if (step.kind == Step::Kind::putBack) {
            followPutBack(hasEnded);
        }
    }
}

void Verdict::followSweep(const Step& step, bool hasEnded) {
    for (auto& [item, places] : m_places) {
        if (step.empties && places.trash) {
            places.gone = true;
            places.remainder = !hasEnded;
            places.trash = !hasEnded;
        }
    }
    for (auto& [item, places] : m_places) {
        if (places.home && std::ranges::find(step.rows, item->path) != step.rows.end()) {
            m_swept.push_back(item);
            places.trash = true;
            places.home = !hasEnded;
        }
    }
    if (!m_swept.empty()) {
        m_mayBeNew = true;
        m_mayBeOld = m_mayBeOld && !hasEnded;
        m_mayBeNone = m_mayBeNone && !hasEnded;
    }
}

void Verdict::followPutBack(bool hasEnded) {
    for (auto* item : namedByOperation()) {
        if (!isTaken(*item)) {
            auto& places = m_places[item];
            places.home = true;
            places.trash = places.trash && !hasEnded;
        }
    }
    m_mayBeNone = true;
    if (hasEnded) {
        m_mayBeOld = m_mayBeNew = false;
    }
}

// Whether something else lies by now where the item came from.
bool Verdict::isTaken(const TrialItem& place) const {
    return std::ranges::any_of(m_places, [&](const auto& entry) {
        return entry.first != &place && entry.second.home && entry.first->path == place.path;
    });
}

// The steps before a put back have ended, so that there is one operation or none.
std::vector<TrialItem*> Verdict::namedByOperation() {
    if (m_mayBeNew) {
        return m_swept;
    }
    std::vector<TrialItem*> named;
    for (const auto& move :
         m_mayBeOld&& m_stored.operation ? m_stored.operation->moves : std::vector<TrashMove>()) {
        for (auto& [item, places] : m_places) {
            if (places.trash && item->nameInTrash == move.to.lastPathComponent() &&
                m_home.path(item->path) == move.from.path()) {
                named.push_back(item);
            }
        }
    }
    return named;
}

void Verdict::lookIntoTrash() {
    for (const auto& name : namesIn(m_home.trash() + "/files")) {
        const auto tree = treeAt(m_home.trash() + "/files/" + name);
        count(tree);
        auto* item = itemOf(tree, name);
        if (item == nullptr) {
            problem("the Trash holds what was never there, or not so: " + name);
            continue;
        }
        if (tree != item->tree) {
            ++m_tally.remainders;
            item->tree = tree;
        }
        m_found[item].nameInTrash = name;
        checkRecord(*item, name);
    }
    countStrays();
}

// The item whose content this is; else the one of that name that was being deleted, when this is what is left of it.
TrialItem* Verdict::itemOf(const TreeContent& tree, const std::string& name) {
    TrialItem* whole = nullptr;
    TrialItem* inPart = nullptr;
    for (auto& [item, places] : m_places) {
        if (m_found.contains(item)) {
            continue;
        }
        if (item->tree == tree && (whole == nullptr || item->nameInTrash == name)) {
            whole = item;
        }
        if (places.remainder && item->nameInTrash == name && isRemainderOf(tree, item->tree)) {
            inPart = item;
        }
    }
    return whole != nullptr ? whole : inPart;
}

void Verdict::checkRecord(const TrialItem& item, const std::string& name) {
    const auto origin = TrashInfo::originalPath(textOf(m_home.trash() + "/info/" + name + ".trashinfo"));
    if (origin != m_home.path(item.path)) {
        problem("in the Trash without a record that leads home: " + name);
    }
}

void Verdict::countStrays() {
    std::size_t strays = 0;
    for (const auto& record : namesIn(m_home.trash() + "/info")) {
        const auto item = m_home.trash() + "/files/" + fs::path(record).stem().string();
        strays += fs::exists(fs::symlink_status(item)) ? 0U : 1U;
    }
    m_tally.strayRecords = std::max(m_tally.strayRecords, strays);
}

void Verdict::lookAtHome() {
    auto home = treeAt(m_home.home());
    for (const char* own : TrialHome::kOwn) {
        for (const auto& [path, piece] : partOf(home, own)) {
            home.erase(path.empty() ? own : own + ("/" + path));
        }
    }
    count(home);
    TreeContent items;
    for (auto& [item, places] : m_places) {
        auto tree = partOf(home, item->path);
        if (tree.empty() || tree != item->tree) {
            continue;
        }
        if (m_found[item].atHome || !m_found[item].nameInTrash.empty()) {
            problem("both at home and in the Trash: " + item->path);
        }
        m_found[item].atHome = true;
        for (auto& [below, piece] : tree) {
            items.emplace(item->path + (below.empty() ? "" : "/" + below), std::move(piece));
        }
    }
    checkOthers(home, items);
}

void Verdict::checkOthers(const TreeContent& home, const TreeContent& items) {
    for (const auto& [path, piece] : home) {
        const auto other = m_home.others().find(path);
        const bool isOther =
            other != m_home.others().end() &&
            (S_ISDIR(piece.mode) ? isSameKind(other->second, piece) : other->second == piece);
        if (!isOther && !items.contains(path)) {
            problem("at home lies what was never there, or not so: " + path);
        }
    }
    for (const auto& [path, piece] : m_home.others()) {
        if (!home.contains(path) && !m_home.mayBeMissing(path)) {
            problem("lost, and no item: " + path);
        }
    }
}

void Verdict::checkItems() {
    for (auto& [item, places] : m_places) {
        const auto found = m_found.find(item);
        const bool isThere =
            found != m_found.end() && (found->second.atHome || !found->second.nameInTrash.empty());
        if (!isThere) {
            if (!places.gone) {
                problem("LOST: " + item->path + " (" + (item->isAtHome() ? "at home" : item->nameInTrash) +
                        ")");
            }
        } else if (found->second.atHome ? !places.home : !places.trash) {
            problem("in the wrong place: " + item->path);
        }
    }
}

// Old or new, and nothing between: a write that was told to have ended is there after any kill.
void Verdict::checkSettings() {
    const FileDefaults defaults(FileDefaults::userPath(m_home.home()));
    std::int64_t writes = m_progress.writesEnded;
    while (writes <= m_progress.writesBegun && !holdsWrites(defaults, writes)) {
        ++writes;
    }
    if (writes > m_progress.writesBegun) {
        problem("the settings are neither the old nor the new ones");
    }
    m_stored.writes = writes;
    const auto paths = defaults.stringArray(DefaultsKeys::kProtectedPaths);
    const std::vector<std::string> expected = {m_home.path(TrialHome::kProtected)};
    if (paths ? *paths != expected : m_stored.isProtected || m_progress.begun > 0) {
        problem("the settings lost what is protected");
    }
    m_stored.isProtected = paths.has_value();
    const auto data = defaults.data(DefaultsKeys::kLastOperation);
    const auto operation = data ? StoredRecords::decodeUndoableOperation(*data) : std::nullopt;
    if (data && !operation) {
        problem("the stored operation can't be read");
    }
    checkOperation(operation);
    m_stored.operation = operation;
}

void Verdict::checkOperation(const std::optional<UndoableOperation>& operation) {
    const bool isNew = operation && operation->label == m_plan.label;
    const bool isOld = !isNew && operation == m_stored.operation;
    if (isNew) {
        if (!m_mayBeNew || !isOfThisLife(*operation)) {
            problem("the operation names other moves than there were");
        }
    } else if (!(isOld && m_mayBeOld) && !(!operation && m_mayBeNone)) {
        problem("the operation is neither the old nor the new one");
    }
}

// All rows that moved are named, each with the place where it was put.
bool Verdict::isOfThisLife(const UndoableOperation& operation) const {
    std::set<std::string> from;
    for (const auto& move : operation.moves) {
        from.insert(move.from.path());
        for (auto* item : m_swept) {
            const auto found = m_found.find(item);
            if (move.from.path() == m_home.path(item->path) && found != m_found.end() &&
                !found->second.atHome &&
                move.to.path() != m_home.trash() + "/files/" + found->second.nameInTrash) {
                return false;
            }
        }
    }
    std::set<std::string> swept;
    for (const auto* item : m_swept) {
        swept.insert(m_home.path(item->path));
    }
    return from == swept && operation.moves.size() == swept.size();
}

// What the moments of the kills were worth.
void Verdict::countMiddles() {
    if (m_progress.begun == m_progress.ended) {
        return;
    }
    const auto& step = m_plan.steps[static_cast<std::size_t>(m_progress.ended)];
    int cameHome = 0;
    int left = 0;
    int gone = 0;
    int stayedInTrash = 0;
    for (auto& [item, places] : m_places) {
        const auto& found = m_found[item];
        const bool isThere = found.atHome || !found.nameInTrash.empty();
        gone += isThere ? 0 : 1;
        left += item->isAtHome() && isThere && !found.atHome ? 1 : 0;
        cameHome += !item->isAtHome() && found.atHome ? 1 : 0;
        stayedInTrash += !item->isAtHome() && isThere && !found.atHome ? 1 : 0;
    }
    if (step.kind == Step::Kind::sweep) {
        m_tally.emptyingsInTheMiddle += step.empties && gone > 0 && stayedInTrash > 0 ? 1 : 0;
        m_tally.sweepsInTheMiddle +=
            left > 0 && (!m_stored.operation || m_stored.operation->label != m_plan.label);
    } else if (step.kind == Step::Kind::putBack) {
        m_tally.putBacksInTheMiddle += m_stored.operation && (cameHome > 0 || !m_swept.empty()) ? 1 : 0;
    }
}

void Verdict::takeOver() {
    std::erase_if(m_home.items(), [&](TrialItem& item) {
        const auto& found = m_found[&item];
        item.nameInTrash = found.nameInTrash;
        return !found.atHome && found.nameInTrash.empty();
    });
}

void Verdict::count(const TreeContent& tree) {
    m_tally.pieces += tree.size();
    for (const auto& [path, piece] : tree) {
        m_tally.bytes += piece.content.size();
    }
}

} // namespace quillane
