#include "IndexedItem.h"
#include "PlainText.h"
#include "ScreenCapture.h"
#include "TextFileSearch.h"

namespace quillane {
namespace {

FileURL urlOf(std::string_view path) {
    return FileURL(std::string(path));
}

// What can't be read adds nothing.
Bytes packageSize(const FileSystem& files, const FileURL& package, const StopToken& stop) {
    Bytes sum = 0;
    const auto add = [&](const WalkEntry& entry) {
        if (stop.stopRequested()) {
            return WalkAnswer::stop;
        }
        if (entry.name.starts_with("._")) {
            return WalkAnswer::skipBelow; // no file of its own, but what a volume keeps of another one
        }
        if (entry.type == EntryType::regular) {
            const auto values = entry.resourceValues();
            sum = checkedSum(sum, values ? values->fileSize : 0);
        }
        return WalkAnswer::proceed;
    };
    static_cast<void>(files.walk(package, {}, add));
    return sum;
}

} // namespace

MetadataValue IndexedItem::value(MetadataAttribute attribute) {
    switch (attribute) {
    case MetadataAttribute::contentType:
        return m_contentType.identifier();
    case MetadataAttribute::contentTypeTree:
        return std::span<const std::string_view>(m_contentType.tree());
    case MetadataAttribute::displayName:
        return displayName();
    case MetadataAttribute::fileName:
        return fileName();
    case MetadataAttribute::size:
        return size();
    case MetadataAttribute::contentChangeDate: {
        const auto& values = resources();
        return values ? MetadataValue(values->contentModified) : MetadataValue();
    }
    case MetadataAttribute::lastUsedDate: {
        const auto date = m_source.metadata.lastUsed(urlOf(m_path));
        return date ? MetadataValue(*date) : MetadataValue();
    }
    case MetadataAttribute::screenCapture:
        return screenCapture();
    case MetadataAttribute::textContent:
    case MetadataAttribute::unknown:
        break;
    }
    return {};
}

std::string_view IndexedItem::fileName() const {
    return m_path.substr(m_path.rfind('/') + 1);
}

// The Finder hides the extension of applications.
std::string_view IndexedItem::displayName() const {
    auto name = fileName();
    if (m_contentType.is("com.apple.application-bundle")) {
        name.remove_suffix(pathExtensionOf(name).size() + 1);
    }
    return name;
}

const std::optional<ResourceValues>& IndexedItem::resources() {
    if (!m_hasAskedResources) {
        m_hasAskedResources = true;
        const auto values =
            m_walked != nullptr ? m_walked->resourceValues() : m_source.files.resourceValues(urlOf(m_path));
        if (values) {
            m_resources = *values;
        }
    }
    return m_resources;
}

MetadataValue IndexedItem::size() {
    if (m_entryType != EntryType::directory) {
        const auto& values = resources();
        return values ? MetadataValue(values->fileSize) : MetadataValue();
    }
    if (!m_contentType.isPackage()) {
        return {};
    }
    if (!m_packageSize) {
        m_packageSize = packageSize(m_source.files, urlOf(m_path), m_source.stop);
    }
    return *m_packageSize;
}

MetadataValue IndexedItem::screenCapture() const {
    const bool isPicture = m_entryType == EntryType::regular && m_contentType.conformsTo("public.image");
    return isPicture && isMarkedAsScreenCapture() ? MetadataValue(Bytes{1}) : MetadataValue();
}

bool IndexedItem::isMarkedAsScreenCapture() const {
    const auto url = urlOf(m_path);
    const auto attribute =
        m_source.files.extendedAttribute(url, ScreenCapture::kAttribute, ScreenCapture::kLongestAttribute);
    if (attribute) {
        return ScreenCapture::isAttributeTrue(*attribute);
    }
    return m_contentType.is("public.png") &&
           ScreenCapture::isMarkedPng(m_source.files.read(url, ScreenCapture::kHead).valueOr(""));
}

DocumentKind IndexedItem::kind() {
    if (!m_kind) {
        m_kind = findKind();
    }
    return *m_kind;
}

// Without a reader of documents those that are also text, such as web pages, are read as it.
DocumentKind IndexedItem::findKind() const {
    if (m_entryType != EntryType::regular) {
        return DocumentKind::none;
    }
    const auto kind = documentKind(m_contentType, pathExtensionOf(fileName()));
    if (m_source.documents != nullptr || !isDocument(kind)) {
        return kind;
    }
    return m_contentType.conformsTo("public.text") ? DocumentKind::plainText : DocumentKind::none;
}

MetadataAnswer IndexedItem::occursInContent(const TextPattern& pattern) {
    const auto kind = this->kind();
    if (kind == DocumentKind::none) {
        return MetadataAnswer::no;
    }
    const bool asksForAny = pattern.matchesEverything();
    if (asksForAny && kind != DocumentKind::unknown) {
        return MetadataAnswer::yes;
    }
    if (m_content == Content::later) {
        return MetadataAnswer::later;
    }
    if (m_source.stop.stopRequested()) {
        return MetadataAnswer::no;
    }
    const bool occurs = asksForAny         ? isText()
                        : isDocument(kind) ? occursInDocument(pattern, kind)
                                           : occursInPlainText(pattern, kind);
    return occurs ? MetadataAnswer::yes : MetadataAnswer::no;
}

bool IndexedItem::isText() const {
    const auto start = m_source.files.read(urlOf(m_path), TextFileSearch::kPortion);
    return start && PlainText::formatOf(*start, PlainText::Claim::none).encoding != PlainText::Encoding::none;
}

bool IndexedItem::occursInPlainText(const TextPattern& pattern, DocumentKind kind) const {
    using PlainText::Claim;
    const auto claim = kind == DocumentKind::unknown ? Claim::none : Claim::declared;
    if (const auto* const needle = pattern.needle()) {
        return TextFileSearch::occurs(*needle, m_source.files, urlOf(m_path), m_source.stop, claim);
    }
    if (claim == Claim::none && !isText()) {
        return false; // what is data is read no further
    }
    const auto start = m_source.files.read(urlOf(m_path), kMostDecoded);
    return start && pattern.occursIn(PlainText::decoded(*start, claim));
}

bool IndexedItem::occursInDocument(const TextPattern& pattern, DocumentKind kind) const {
    const auto text = m_source.documents->text(urlOf(m_path), kind, m_source.stop);
    const auto* const needle = pattern.needle();
    return needle != nullptr ? needle->occursIn(text) : pattern.occursIn(text);
}

} // namespace quillane
