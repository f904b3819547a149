#pragma once
#include "Clock.h"
#include "ContentTypes.h"
#include "CostlyTime.h"
#include "DocumentReader.h"
#include "FileSystem.h"
#include "Metadata.h"
#include "MetadataQuery.h"
#include "StopToken.h"
#include "TaskRunner.h"
#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace quillane {

// What a search may use beside its own thread and the disk.
struct SearchHelpers {
    TaskRunner* threads = nullptr;             // idle threads of the user-initiated pool read content
    const DocumentReader* documents = nullptr; // null: only plain text has content
};

// Answers what the system's program "mdfind" would, where there is no such program: the same arguments, the
// same text. There is no index behind it; every search walks the folders, asks names and types first and the
// disk only for what the query still depends on, so a search by type costs no more than the listing. What depends on
// written content waits until the walk has ended: plain text and cheap documents are then read side by side, and at
// last the documents that need a program.
//
// Arguments: options, then the query (parts are joined with blanks).
//     -onlyin DIR  below this folder alone, itself not; may be repeated
//     -attr NAME   prints "   NAME = VALUE" behind each path; may be repeated; "(null)" for what is absent
//     -0           ends each answer with a NUL in place of a line feed
// Free text without an operator is not understood, and neither are the other options: those give no answers.
//
// The text: one absolute path a line, in the order of their bytes. Names are printed as they are, so that of one with a
// line feed the halves would be read as paths, of which the second could be any at all: it is told only where NULs end
// the lines, and neither is what lies in such a folder. No match gives the empty text. What can't be read as a query gives
// "Failed to create query for 'QUERY'." on a line of its own, as the program does on its standard output.
//
// What the index would not hold is not found, even when it is asked for by name: names that begin with a dot,
// folders named *.noindex, what lies inside packages, and the Library folder of a home folder. Below "/",
// folders of the system that hold nothing of a person's ("/private", "/usr", "/dev" and their like) are left
// out. An application is a folder named *.app that holds Contents/Info.plist.
//
// Written content is found in all of a plain text (TextFileSearch), in a file whose type nobody declares when it looks
// like one, and in what a DocumentReader tells.
//
// Attributes are those of MetadataAttribute. kMDItemIsScreenCapture is 1 for a picture whose extended attribute or
// whose own text names a tool for such pictures (ScreenCapture), and absent from all else.
class MetadataSearch {
  public:
    // How long one search, in all its runs (CostlyTime), goes on to begin documents that need a program, and how many
    // are read at once.
    static constexpr Duration kTimeForCostly = std::chrono::seconds(20);
    static constexpr int kCostlyAtOnce = 2;

    // `roots` is where a search without -onlyin looks. "/" for a volume that is small enough to be walked
    // whole, such as a sample; the home folder and "/Applications" for a real machine.
    MetadataSearch(const FileSystem& files, const Metadata& metadata, const Clock& clock,
                   std::vector<FileURL> roots, SearchHelpers helpers = {});

    // Never fails. When stopped it opens and lists nothing more, and what it found by then is of no use. Blocks for
    // as long as the walk and the reading take; any thread, many at once, where the helpers allow it.
    std::string answer(const std::vector<std::string>& arguments, const StopToken& stop = {}) const;

  private:
    struct Request;
    struct Undecided;
    struct Search;

    void walk(FileURL root, Search& search) const;
    WalkAnswer look(const WalkEntry& entry, const std::string& path, Search& search) const;
    void decide(const std::vector<Undecided>& items, Search& search) const;
    void decideCostly(const std::vector<Undecided>& items, Search& search) const;
    bool isIndexed(const FileURL& folder) const;
    bool isLeftOut(std::string_view parent, std::string_view name, EntryType type) const;
    const ContentType& contentType(const std::string& path, std::string_view name, EntryType entryType) const;

    const FileSystem& m_files;
    const Metadata& m_metadata;
    const Clock& m_clock;
    std::vector<FileURL> m_roots;
    SearchHelpers m_helpers;
    std::string m_home;
    mutable CostlyTime m_costlyTime{kTimeForCostly};
};

} // namespace quillane
