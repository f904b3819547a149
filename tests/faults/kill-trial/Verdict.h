#pragma once
#include "Life.h"
#include "TrialHome.h"
#include "UndoableOperation.h"
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quillane {

// What the settings held before a life.
struct Stored {
    std::optional<UndoableOperation> operation;
    std::int64_t writes = 0; // the number of the last one
    bool isProtected = false;
};

// What was looked at, over all lives.
struct Tally {
    std::uint64_t pieces = 0; // files, folders and links that were compared
    std::uint64_t bytes = 0;  // of their contents
    int emptyingsInTheMiddle = 0;
    int sweepsInTheMiddle = 0; // some rows had moved and no operation names them
    int putBacksInTheMiddle = 0;
    int remainders = 0; // items that were half deleted
    std::size_t strayRecords = 0;
};

// Compares all that lies on the disk after a life with what may lie there, and takes it for what was there before
// the next. Everything is judged by content: a name or a place proves nothing.
class Verdict {
  public:
    Verdict(TrialHome& home, Stored& stored, const Plan& plan, const Progress& progress, Tally& tally);
    // Empty when nothing is lost, doubled, changed or told wrongly.
    const std::vector<std::string>& problems() const { return m_problems; }

  private:
    // Where an item may lie by what the life had begun and ended.
    struct Places {
        bool home = false;
        bool trash = false;
        bool gone = false;
        bool remainder = false; // in the Trash, in part
    };
    struct Found {
        bool atHome = false;
        std::string nameInTrash;
    };

    void followPlan();
    void followSweep(const Step& step, bool hasEnded);
    void followPutBack(bool hasEnded);
    bool isTaken(const TrialItem& place) const;
    std::vector<TrialItem*> namedByOperation();

    void lookIntoTrash();
    TrialItem* itemOf(const TreeContent& tree, const std::string& name);
    void checkRecord(const TrialItem& item, const std::string& name);
    void countStrays();
    void lookAtHome();
    void checkOthers(const TreeContent& home, const TreeContent& items);
    void checkItems();
    void checkSettings();
    void checkOperation(const std::optional<UndoableOperation>& operation);
    bool isOfThisLife(const UndoableOperation& operation) const;
    void countMiddles();
    void takeOver();
    void count(const TreeContent& tree);
    void problem(const std::string& what) { m_problems.push_back(what); }

    TrialHome& m_home;
    Stored& m_stored;
    const Plan& m_plan;
    const Progress& m_progress;
    Tally& m_tally;
    std::map<TrialItem*, Places> m_places;
    std::map<TrialItem*, Found> m_found;
    std::vector<TrialItem*> m_swept; // by this life, as far as it had begun
    bool m_mayBeOld = true;          // the operation of an earlier life stands
    bool m_mayBeNew = false;
    bool m_mayBeNone = false;
    std::vector<std::string> m_problems;
};

} // namespace quillane
