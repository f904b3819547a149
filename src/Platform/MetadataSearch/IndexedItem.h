#pragma once
#include "ContentTypes.h"
#include "DocumentKind.h"
#include "DocumentReader.h"
#include "FileSystem.h"
#include "Metadata.h"
#include "MetadataQuery.h"
#include "StopToken.h"
#include <cstddef>
#include <optional>
#include <string_view>

namespace quillane {

// Where the items of one search come from.
struct ItemSource {
    const FileSystem& files;
    const Metadata& metadata;
    const DocumentReader* documents; // null where nothing but plain text has content
    const StopToken& stop;           // ends the reading of content, which then counts as absent
};

// An entry of the disk as the index would know it. Nothing is asked of the disk before a value needs it, and
// then once, of the walk that tells the entry where there is one; name and type need nothing. Lives within one step of
// a search.
class IndexedItem final : public MetadataItem {
  public:
    // What is written in it is told now or not yet.
    enum class Content { now, later };

    // For a pattern that is more than a text to be found, content is read from the start of a file alone.
    static constexpr std::size_t kMostDecoded = std::size_t{4} << 20U;

    // `source`, `path` and `walked` must outlive the item. `kind` is what another item of this path has told.
    IndexedItem(const ItemSource& source, std::string_view path, EntryType entryType,
                const ContentType& contentType, Content content, const WalkEntry* walked = nullptr,
                std::optional<DocumentKind> kind = {})
        : m_source(source)
        , m_path(path)
        , m_entryType(entryType)
        , m_contentType(contentType)
        , m_content(content)
        , m_walked(walked)
        , m_kind(kind) {}

    // Absent where the platform has none: the size of a plain folder, the content of what is no text. The size
    // of a package is the sum of its files, which costs a walk. Content is searched and never told.
    MetadataValue value(MetadataAttribute attribute) override;

    MetadataAnswer occursInContent(const TextPattern& pattern) override;
    // How its content is read. Costs a look at type and name once.
    DocumentKind kind();

  private:
    std::string_view fileName() const;
    std::string_view displayName() const;
    const std::optional<ResourceValues>& resources();
    MetadataValue size();
    MetadataValue screenCapture() const;
    bool isMarkedAsScreenCapture() const;
    DocumentKind findKind() const;
    bool isText() const;
    bool occursInPlainText(const TextPattern& pattern, DocumentKind kind) const;
    bool occursInDocument(const TextPattern& pattern, DocumentKind kind) const;

    const ItemSource& m_source;
    std::string_view m_path;
    EntryType m_entryType;
    const ContentType& m_contentType;
    Content m_content;
    const WalkEntry* m_walked; // null behind the walk
    std::optional<DocumentKind> m_kind;
    bool m_hasAskedResources = false;
    std::optional<ResourceValues> m_resources;
    std::optional<Bytes> m_packageSize;
};

} // namespace quillane
