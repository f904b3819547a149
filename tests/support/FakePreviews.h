#pragma once
#include "Previews.h"
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace quillane {

// A desktop that pictures what it was told to and takes notes. Any thread.
class FakePreviews final : public Previews {
  public:
    struct Request {
        FileURL url;
        PixelSize size;
        std::optional<int> page; // absent for a thumbnail
        friend bool operator==(const Request&, const Request&) = default;
    };

    void setThumbnail(const FileURL& url, std::shared_ptr<const IconImage> picture) {
        const std::lock_guard lock(m_mutex);
        m_thumbnails[url] = std::move(picture);
    }
    void setPages(const FileURL& url, std::vector<PreviewPage> pages) {
        const std::lock_guard lock(m_mutex);
        m_pages[url] = std::move(pages);
    }
    std::vector<Request> requests() const {
        const std::lock_guard lock(m_mutex);
        return m_requests;
    }
    // Of those, how many had been asked to stop before they began.
    int stoppedRequests() const {
        const std::lock_guard lock(m_mutex);
        return m_stoppedRequests;
    }

    std::shared_ptr<const IconImage> thumbnail(const FileURL& url, PixelSize size,
                                               const StopToken& stop) override {
        const std::lock_guard lock(m_mutex);
        note({url, size, std::nullopt}, stop);
        const auto found = m_thumbnails.find(url);
        return stop.stopRequested() || found == m_thumbnails.end() ? nullptr : found->second;
    }
    std::optional<PreviewPage> page(const FileURL& url, int number, PixelSize size,
                                    const StopToken& stop) override {
        const std::lock_guard lock(m_mutex);
        note({url, size, number}, stop);
        const auto found = m_pages.find(url);
        if (stop.stopRequested() || found == m_pages.end() || number < 0 ||
            static_cast<std::size_t>(number) >= found->second.size()) {
            return std::nullopt;
        }
        return found->second[static_cast<std::size_t>(number)];
    }

  private:
    void note(Request request, const StopToken& stop) {
        m_requests.push_back(std::move(request));
        m_stoppedRequests += stop.stopRequested() ? 1 : 0;
    }

    mutable std::mutex m_mutex; // guards everything below
    std::map<FileURL, std::shared_ptr<const IconImage>> m_thumbnails;
    std::map<FileURL, std::vector<PreviewPage>> m_pages;
    std::vector<Request> m_requests;
    int m_stoppedRequests = 0;
};

} // namespace quillane
