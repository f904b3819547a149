#pragma once
#include "DocumentText.h"
#include "FakeDirectoryWatch.h"
#include "FakeMenuBarExtra.h"
#include "FakeMetadata.h"
#include "FakePower.h"
#include "FakePreviews.h"
#include "FakeRunningApplications.h"
#include "FakeUpdater.h"
#include "FakeWorkspace.h"
#include "FaultFileSystem.h"
#include "FaultTrash.h"
#include "FolderTrash.h"
#include "ManualClock.h"
#include "MemoryDefaults.h"
#include "MetadataSearch.h"
#include "Platform.h"
#include "PosixCommandRunner.h"
#include "PosixFileSystem.h"
#include "RecordingNotifications.h"
#include "SampleLaunchctl.h"
#include "SampleMac.h"
#include "ScriptedCommandRunner.h"
#include "SearchingCommandRunner.h"
#include "StepTaskRunner.h"
#include "TemporaryFolder.h"
#include <string>
#include <utility>
#include <vector>

namespace quillane {

// Who answers searches on a sample Mac.
enum class SampleSpotlight {
    scripted, // a table: exactly what the Mac declares as indexed, stale entries and all, in declared order
    embedded  // the program's own search, which walks the volume
};

// A sample Mac laid in a folder of its own, and a platform on top of it: files really on the disk (and able to
// fail on demand), time and threads in the test's hand. All of it goes with this.
class SamplePlatform {
  public:
    explicit SamplePlatform(SampleMac sampleMac, SampleSpotlight spotlight = SampleSpotlight::scripted)
        : mac(std::move(sampleMac))
        , m_spotlight(spotlight) {
        mac.build(disk.path());
        for (const auto& [path, date] : mac.lastUses()) {
            metadata.setLastUsed(FileURL(path), date);
        }
        clock.setNow(mac.now());
        answerSpotlight(mac.spotlightOutput());
    }

    // The scripted search prints this when asked for applications.
    void answerSpotlight(std::string output) {
        commands.answer(kSearch, applicationQuery(), std::move(output));
    }
    // The search program can't be started.
    void withoutSpotlight() { commands.fail(kSearch, applicationQuery()); }

    std::vector<ExpectedApp> expectedApplications() const { return mac.expectedApplications(disk.path()); }

    static constexpr const char* kSearch = "/usr/bin/mdfind";
    static std::vector<std::string> applicationQuery() {
        return {"kMDItemContentType == 'com.apple.application-bundle'"};
    }

    const SampleMac mac;
    TemporaryFolder disk; // the volume, by paths of the machine
    PosixFileSystem volume{disk.path(), FileURL(std::string(SampleMac::kHome))};
    FaultFileSystem files{volume}; // the volume, by its own paths
    FakeMetadata metadata;
    ScriptedCommandRunner commands;
    FakeWorkspace workspace;
    FakePreviews previews;
    FolderTrash volumeTrash{disk.path(), FileURL(std::string(SampleMac::kHome))};
    FaultTrash trash{volumeTrash};
    FakeRunningApplications running;
    MemoryDefaults defaults;
    StepTaskRunner runner;
    ManualClock clock{runner};
    FakeDirectoryWatch directories{runner};
    RecordingNotifications notifications{runner};
    FakePower power;
    FakeMenuBarExtra menuBarExtra{runner};
    FakeUpdater updater{runner};

  private:
    SampleSpotlight m_spotlight;
    PosixCommandRunner m_readers; // of documents: the machine's own, for there are none on the volume
    DocumentText m_documents{volume, m_readers, clock,
                             [this](const FileURL& url) { return volume.hostPath(url); }};
    MetadataSearch m_search{volume, metadata, clock, {FileURL("/")}, {.documents = &m_documents}};
    SearchingCommandRunner m_searching{volume, m_search, commands};

  public:
    SampleLaunchctl launchctl{mac.loadedLabels(), m_spotlight == SampleSpotlight::embedded
                                                      ? static_cast<CommandRunner&>(m_searching)
                                                      : static_cast<CommandRunner&>(commands)};
    const Platform platform{files,       launchctl,     metadata, clock,        runner,
                            workspace,   trash,         running,  defaults,     previews,
                            directories, notifications, power,    menuBarExtra, updater};
};

} // namespace quillane
