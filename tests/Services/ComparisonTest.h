#pragma once
#include "AbsentCommandRunner.h"
#include "FakeMetadata.h"
#include "FakeRunningApplications.h"
#include "FakeWorkspace.h"
#include "FolderTrash.h"
#include "HexadecimalText.h"
#include "MadeUpFiles.h"
#include "ManualClock.h"
#include "MemoryDefaults.h"
#include "PlainComparison.h"
#include "StepTaskRunner.h"
#include "StopToken.h"
#include "TemporaryFolder.h"
#include <string>
#include <utility>
#include <vector>

namespace quillane {

// Made up files of one size, told apart by the program and in the plainest way.
class ComparisonWorld {
  public:
    // Named by their place in the list.
    explicit ComparisonWorld(std::vector<MadeUpFile> made) {
        for (auto& file : made) {
            lay(kSize, std::to_string(bySize[kSize].size()), std::move(file));
        }
    }

    void lay(Bytes size, const std::string& name, MadeUpFile file) {
        bySize[size].push_back(files.add(name, std::move(file)));
    }

    Platform platformOn(TaskRunner& tasks) {
        return {files, m_commands, m_metadata, m_clock, tasks, m_workspace, m_trash, m_running, m_defaults};
    }
    PlainComparison::Groups compared(TaskRunner& tasks, const StopToken& stop = {}) {
        PlainComparison::Groups groups;
        for (const auto& equal :
             ContentComparison::equalFiles(platformOn(tasks), Priority::userInitiated, bySize, stop, ahead)) {
            auto& [digest, urls] = groups.emplace_back(hexadecimalText(equal.digest), std::vector<FileURL>());
            for (const auto* const url : equal.urls) {
                urls.push_back(*url);
            }
        }
        return groups;
    }
    PlainComparison::Groups compared(const StopToken& stop = {}) { return compared(m_runner, stop); }
    PlainComparison::Groups expected() const { return PlainComparison::groupsOf(files, bySize); }
    // The names of each group.
    std::vector<std::vector<std::string>> names() {
        std::vector<std::vector<std::string>> names;
        for (const auto& [digest, urls] : compared()) {
            auto& group = names.emplace_back();
            for (const auto& url : urls) {
                group.emplace_back(url.lastPathComponent());
            }
        }
        return names;
    }

    MadeUpFiles files;
    std::map<Bytes, std::vector<FileURL>> bySize;
    Bytes ahead = SteppedComparison::kAhead;

  private:
    static constexpr Bytes kSize = 5'000'000; // hearsay: what is read counts

    AbsentCommandRunner m_commands;
    FakeMetadata m_metadata;
    StepTaskRunner m_runner;
    ManualClock m_clock{m_runner};
    FakeWorkspace m_workspace;
    TemporaryFolder m_folder;
    FolderTrash m_trash{m_folder.path(), FileURL("/Users/alex")};
    FakeRunningApplications m_running;
    MemoryDefaults m_defaults;
};

} // namespace quillane
