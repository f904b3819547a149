#pragma once
#include "Clock.h"
#include "CommandRunner.h"
#include "FileSystem.h"
#include "PictureFit.h"
#include "Previews.h"
#include "ThumbnailMaker.h"
#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quillane {

// Pictures of files as we make them: photographs by Qt's readers, drawings by them in a process of their own, pages of PDF
// documents by Poppler's programs, plain text as it stands, and everything else, such as films, as another maker of
// thumbnails shows it. What a file is decides its content and not its name.
class FilePreviews final : public Previews {
  public:
    // The path of the machine for a path of `files`, for programs.
    using HostPath = std::function<std::string(const FileURL&)>;

    // As much of a text as is told, in bytes of the file.
    static constexpr std::size_t kMostText = std::size_t{256} << 10U;
    // What the decoding of one picture may take.
    static constexpr Duration kPatience = std::chrono::seconds(5);

    // All of them outlive this. `drawingProgram` is what DrawingProgram runs. No other maker where it knows other
    // paths than `files`. Sets a limit of the process, so it is made before other threads run.
    FilePreviews(const FileSystem& files, CommandRunner& programs, const Clock& clock, HostPath hostPath,
                 std::string drawingProgram, ThumbnailMaker* others = nullptr);

    std::shared_ptr<const IconImage> thumbnail(const FileURL& url, PixelSize size,
                                               const StopToken& stop) override;
    std::optional<PreviewPage> page(const FileURL& url, int number, PixelSize size,
                                    const StopToken& stop) override;

  private:
    // A regular file that can be read, and what it is.
    struct Subject {
        FileURL url;
        Date modified;
        std::unique_ptr<OpenFile> file;
        std::string head;      // up to PictureHead::kMostBytes
        std::string_view form; // by PictureHead
    };
    std::optional<Subject> subjectAt(const FileURL& url) const;
    static std::string textOf(const Subject& subject);
    std::shared_ptr<const IconImage> decoded(Subject& subject, PixelSize size, Fit fit,
                                             const StopToken& stop) const;
    std::optional<PreviewPage> pdfPage(const FileURL& url, int number, PixelSize size,
                                       const StopToken& stop) const;
    std::shared_ptr<const IconImage> ofOthers(const Subject& subject, PixelSize size, Fit fit,
                                              const StopToken& stop) const;

    const FileSystem& m_files;
    CommandRunner& m_programs;
    const Clock& m_clock;
    HostPath m_hostPath;
    std::string m_drawingProgram;
    ThumbnailMaker* m_others;
};

} // namespace quillane
