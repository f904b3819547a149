#pragma once
#include <cstdint>
#include <string_view>
#include <vector>

namespace quillane {

// A uniform type: what a file or folder is, by the extension of its name. Identifiers are compared without
// regard to ASCII case, since systems hand them out in either.
class ContentType {
  public:
    // Takes the identifiers from the type itself to the most general.
    explicit ContentType(std::vector<std::string_view> tree);

    // Such as "public.jpeg".
    std::string_view identifier() const { return m_tree.front(); }
    // The type itself and everything that it conforms to, nearest first; each once.
    const std::vector<std::string_view>& tree() const { return m_tree; }
    bool is(std::string_view identifier) const;
    // Whether the tree holds this identifier.
    bool conformsTo(std::string_view identifier) const;
    // A folder that is shown as a single thing.
    bool isPackage() const { return m_isPackage; }

  private:
    std::vector<std::string_view> m_tree;
    std::uint64_t m_lengths = 0; // a bit for each length of an identifier in the tree
    bool m_isPackage = false;
};

// The types that the bare system declares; types that applications would add are not known. Extensions are
// without their dot, in any case. Content is never looked at. Any thread; no call allocates after the first.
namespace ContentTypes {

// The first declared type of that extension that conforms to "public.data": a type of folders such as "app"
// never answers here. "public.data" itself for no extension and for one that nobody declares.
const ContentType& ofFile(std::string_view extension);
// The first declared type of that extension that is a folder; "public.folder" where there is none.
const ContentType& ofFolder(std::string_view extension);
const ContentType& symbolicLink();
const ContentType& folder();
// A device, a socket, a pipe.
const ContentType& otherItem();

} // namespace ContentTypes
} // namespace quillane
