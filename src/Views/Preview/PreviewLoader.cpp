#include "Preview/PreviewLoader.h"
#include "Detached.h"
#include "FileFinder.h"
#include "FileSystem.h"
#include <string>
#include <string_view>
#include <utility>

namespace quillane {

namespace {

PreviewLoader::Look lookAt(const Platform& platform, const PreviewLoader::Wish& wish, const StopToken& stop) {
    PreviewLoader::Look look;
    look.isThere = platform.files.resourceValues(wish.url).ok();
    look.file = FileFinder::describe(platform, wish.url);
    look.page = platform.previews.page(wish.url, wish.page, wish.size, stop);
    if (look.page) {
        look.page->text = PreviewLoader::withLinesBroken(look.page->text);
    } else if (!stop.stopRequested()) {
        look.icon = platform.workspace.icon(wish.url, wish.iconSide);
    }
    return look;
}

bool continuesCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

} // namespace

PreviewLoader::PreviewLoader(const Platform& platform, Arrived arrived)
    : m_platform(platform)
    , m_arrived(std::move(arrived))
    , m_tasks(platform.tasks) {}

void PreviewLoader::load(Wish wish) {
    drop();
    m_next = std::move(wish);
    if (!m_isWorking) {
        m_isWorking = true;
        m_tasks.start([this](const StopToken&) { return work(); });
    }
}

void PreviewLoader::drop() {
    m_next.reset();
    m_stop.requestStop();
}

Task<> PreviewLoader::work() {
    while (const auto next = std::exchange(m_next, std::nullopt)) {
        const Wish& wish = *next;
        m_stop = StopSource();
        const auto stop = m_stop.token();
        const auto look =
            co_await detached(m_platform.tasks, Priority::userInitiated,
                              [platform = m_platform, wish, stop] { return lookAt(platform, wish, stop); });
        if (!stop.stopRequested()) {
            m_arrived(wish, look);
        }
    }
    m_isWorking = false;
}

std::string PreviewLoader::withLinesBroken(const std::string& text) {
    std::string broken;
    broken.reserve(text.size() + text.size() / kLongestLine);
    std::size_t length = 0;
    for (const char c : text) {
        if (length >= kLongestLine && c != '\n' && !continuesCharacter(c)) {
            broken += '\n';
            length = 0;
        }
        broken += c;
        length = c == '\n' ? 0 : length + 1;
    }
    return broken;
}

} // namespace quillane
