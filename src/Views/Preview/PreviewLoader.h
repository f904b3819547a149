#pragma once
#include "FileURL.h"
#include "Platform.h"
#include "Previews.h"
#include "StopToken.h"
#include "Task.h"
#include "TaskScope.h"
#include "UserFile.h"
#include "Workspace.h"
#include <functional>
#include <memory>
#include <optional>

namespace quillane {

// Brings what is to be seen of a file, one file at a time and the newest wish first: what is asked for meanwhile ends
// the work on what was asked for before, and only the last answer comes. Main thread only; the work is done on others.
class PreviewLoader {
  public:
    struct Wish {
        FileURL url;
        int page = 0;
        PixelSize size; // for its picture
        int iconSide = 0;
    };
    struct Look {
        bool isThere = false;
        std::optional<UserFile> file; // absent for what is no regular file
        std::optional<PreviewPage> page;
        std::shared_ptr<const IconImage> icon; // null beside a page
    };
    using Arrived = std::function<void(const Wish&, const Look&)>;

    // `arrived` may ask for the next. It is not called after this has gone.
    PreviewLoader(const Platform& platform, Arrived arrived);

    void load(Wish wish);
    // Nothing arrives any more.
    void drop();

    // Lines that are longer than a line of writing ever is are broken, as views of text are slow with them.
    static constexpr std::size_t kLongestLine = 2000; // bytes
    static std::string withLinesBroken(const std::string& text);

  private:
    Task<> work();

    Platform m_platform;
    Arrived m_arrived;
    std::optional<Wish> m_next;
    StopSource m_stop; // of the work on the wish before it
    bool m_isWorking = false;
    TaskScope m_tasks; // last: its suspended frames go first
};

} // namespace quillane
