#pragma once
#include "Workspace.h"
#include <map>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace quillane {

// A desktop that only takes notes. Icons come from a table; whatever is not in it has the generic one. Any
// thread.
class FakeWorkspace final : public Workspace {
  public:
    struct IconRequest {
        FileURL url;
        int side = 0;
        friend bool operator==(const IconRequest&, const IconRequest&) = default;
    };

    // An icon of one pixel, which tells it from others by its shade of grey.
    static std::shared_ptr<const IconImage> grey(std::uint8_t shade) {
        return std::make_shared<const IconImage>(IconImage{1, 1, {shade, shade, shade, 255}});
    }

    void setIcon(const FileURL& url, std::shared_ptr<const IconImage> image) {
        const std::lock_guard lock(m_mutex);
        m_icons[url] = std::move(image);
    }
    const std::shared_ptr<const IconImage>& genericIcon() const { return m_generic; }

    std::vector<IconRequest> iconRequests() const { return copyOf(m_iconRequests); }
    std::vector<FileURL> opened() const { return copyOf(m_opened); }
    std::vector<std::vector<FileURL>> revealed() const { return copyOf(m_revealed); }
    int settingsOpened() const { return copyOf(m_settingsOpened); }
    int relaunches() const { return copyOf(m_relaunches); }

    std::shared_ptr<const IconImage> icon(const FileURL& url, int side) override {
        const std::lock_guard lock(m_mutex);
        m_iconRequests.push_back({url, side});
        const auto found = m_icons.find(url);
        return found == m_icons.end() ? m_generic : found->second;
    }
    void open(const FileURL& url) override {
        const std::lock_guard lock(m_mutex);
        m_opened.push_back(url);
    }
    void reveal(const std::vector<FileURL>& urls) override {
        const std::lock_guard lock(m_mutex);
        m_revealed.push_back(urls);
    }
    void openFullDiskAccessSettings() override {
        const std::lock_guard lock(m_mutex);
        ++m_settingsOpened;
    }
    void relaunch() override {
        const std::lock_guard lock(m_mutex);
        ++m_relaunches;
    }

  private:
    template <class T>
    T copyOf(const T& value) const {
        const std::lock_guard lock(m_mutex);
        return value;
    }

    const std::shared_ptr<const IconImage> m_generic = grey(200);
    mutable std::mutex m_mutex; // guards everything below
    std::map<FileURL, std::shared_ptr<const IconImage>> m_icons;
    std::vector<IconRequest> m_iconRequests;
    std::vector<FileURL> m_opened;
    std::vector<std::vector<FileURL>> m_revealed;
    int m_settingsOpened = 0;
    int m_relaunches = 0;
};

} // namespace quillane
