#pragma once
#include "ContentTypes.h"
#include "DocumentReader.h"
#include "FileSystem.h"
#include "Metadata.h"
#include "MetadataQuery.h"
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quillane {

// How much written content one search still may read.
struct TextBudget {
    static constexpr std::size_t kBytesOfFile = std::size_t{256} << 10U;   // from the start of each file
    static constexpr std::size_t kBytesOfSearch = std::size_t{128} << 20U; // then content counts as absent
    std::size_t left = kBytesOfSearch;
};

// An entry of the disk as the index would know it. Nothing is asked of the disk before a value needs it, and
// then once; name and type need nothing. Lives within one step of a walk.
class IndexedItem final : public MetadataItem {
  public:
    // `path` must outlive the item. Without `documents` only plain text has content.
    IndexedItem(const FileSystem& files, const Metadata& metadata, const DocumentReader* documents,
                TextBudget& budget, std::string_view path, EntryType entryType,
                const ContentType& contentType)
        : m_files(files)
        , m_metadata(metadata)
        , m_documents(documents)
        , m_budget(budget)
        , m_path(path)
        , m_entryType(entryType)
        , m_contentType(contentType) {}

    // Absent where the platform has none: the size of a plain folder, the content of what is no text. The size
    // of a package is the sum of its files, which costs a walk.
    MetadataValue value(MetadataAttribute attribute) override;

  private:
    std::string_view fileName() const;
    std::string_view displayName() const;
    const std::optional<ResourceValues>& resources();
    MetadataValue size();
    MetadataValue screenCapture() const;
    bool isMarkedAsScreenCapture() const;
    MetadataValue textContent();
    std::string plainText();

    const FileSystem& m_files;
    const Metadata& m_metadata;
    const DocumentReader* m_documents;
    TextBudget& m_budget;
    std::string_view m_path;
    EntryType m_entryType;
    const ContentType& m_contentType;
    bool m_hasAskedResources = false;
    std::optional<ResourceValues> m_resources;
    std::optional<Bytes> m_packageSize;
    std::optional<std::string> m_text;
};

} // namespace quillane
