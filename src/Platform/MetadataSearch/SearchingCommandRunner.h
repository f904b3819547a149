#pragma once
#include "CommandRunner.h"
#include "FileSystem.h"
#include "MetadataSearch.h"

namespace quillane {

// A machine that always has the system's search program: where the file system holds none, its runs are
// answered by the embedded search. Every other run goes to the wrapped runner.
class SearchingCommandRunner final : public CommandRunner {
  public:
    static constexpr const char* kProgram = "/usr/bin/mdfind";

    SearchingCommandRunner(const FileSystem& files, const MetadataSearch& search, CommandRunner& others)
        : m_files(files)
        , m_search(search)
        , m_others(others) {}

    std::uint32_t userID() const override { return m_others.userID(); }

  protected:
    Result<std::string> outputOf(const Run& run) override {
        if (run.path == kProgram && !m_files.exists(FileURL(run.path))) {
            return m_search.answer(run.arguments, run.stop);
        }
        return m_others.run(run.path, run.arguments, run.stop, run.mostBytes, run.errors);
    }

  private:
    const FileSystem& m_files;
    const MetadataSearch& m_search;
    CommandRunner& m_others;
};

} // namespace quillane
