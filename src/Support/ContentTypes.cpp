#include "ContentTypes.h"
#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

namespace quillane {
namespace {

struct Declaration {
    std::string_view identifier;
    std::string_view conformsTo; // identifiers with a blank between
    std::string_view extensions; // lower case, with a blank between
};

// Where two types claim one extension, the first stands. Conformance is to types of this table alone.
constexpr Declaration kDeclarations[] = {
    // The roots of the hierarchy
    {"public.item", "", ""},
    {"public.content", "", ""},
    {"public.data", "public.item", ""},
    {"public.directory", "public.item", ""},
    {"public.folder", "public.directory", ""},
    {"public.symlink", "public.item", ""},
    {"public.executable", "public.item", ""},
    {"public.composite-content", "public.content", ""},
    {"public.archive", "public.item", ""},
    {"public.disk-image", "public.archive", ""},
    {"public.text", "public.data public.content", ""},
    {"public.plain-text", "public.text", "txt text"},
    {"public.source-code", "public.plain-text", ""},
    {"public.script", "public.source-code", ""},
    {"public.shell-script", "public.script", "sh command"},
    {"public.image", "public.data public.content", ""},
    {"public.audiovisual-content", "public.data public.content", ""},
    {"public.movie", "public.audiovisual-content", ""},
    {"public.video", "public.movie", ""},
    {"public.audio", "public.audiovisual-content", ""},
    {"public.font", "public.data public.content", ""},
    {"public.presentation", "public.composite-content", ""},
    {"public.spreadsheet", "public.content", ""},
    {"com.apple.bundle", "public.directory", ""},
    {"com.apple.package", "public.directory", ""},

    // Disk images. They are archives too, by public.disk-image.
    {"com.apple.disk-image", "public.disk-image public.data", ""},
    {"com.apple.disk-image-udif", "com.apple.disk-image", "dmg udif"},
    {"public.iso-image", "public.disk-image public.data", "iso"},
    {"com.apple.disk-image-ndif", "com.apple.disk-image", "img ndif"},
    {"com.apple.disk-image-cdr", "com.apple.disk-image", "cdr dvdr"},
    {"com.apple.disk-image-smi", "com.apple.disk-image", "smi"},
    {"com.apple.disk-image-dart", "com.apple.disk-image", "dart"},
    {"com.apple.disk-image-dc42", "com.apple.disk-image", "dc42"},
    {"com.apple.disk-image-sparse", "com.apple.disk-image", "sparseimage asif"},

    // Installers
    {"com.apple.installer-package-archive", "public.data public.archive", "pkg mpkg"},

    // Images
    {"public.jpeg", "public.image", "jpg jpeg jpe"},
    {"public.png", "public.image", "png"},
    {"com.compuserve.gif", "public.image", "gif"},
    {"public.tiff", "public.image", "tif tiff"},
    {"com.microsoft.bmp", "public.image", "bmp"},
    {"public.heic", "public.image", "heic"},
    {"public.heif", "public.image", "heif"},
    {"org.webmproject.webp", "public.image", "webp"},
    {"public.xml", "public.text", "xml"},
    {"public.svg-image", "public.image public.xml", "svg svgz"},
    {"com.adobe.photoshop-image", "public.image", "psd"},
    {"com.adobe.photoshop-large-image", "public.image", "psb"},
    {"com.adobe.illustrator.ai-image", "public.image", "ai"},
    {"com.microsoft.ico", "public.image", "ico"},
    {"com.apple.icns", "public.image", "icns"},
    {"com.truevision.tga-image", "public.image", "tga"},
    {"com.ilm.openexr-image", "public.image", "exr"},
    {"public.jpeg-2000", "public.image", "jp2 j2k"},
    {"com.apple.pict", "public.image", "pict pct pic"},
    {"public.xbitmap-image", "public.image", "xbm"},
    {"com.sgi.sgi-image", "public.image", "sgi"},
    {"com.kodak.flashpix-image", "public.image", "fpx"},
    {"com.apple.quicktime-image", "public.image", "qtif"},
    {"com.apple.macpaint-image", "public.image", "pntg"},
    {"public.mpo-image", "public.image", "mpo"},
    {"public.radiance", "public.image", "hdr"},
    {"org.oasis-open.opendocument.image", "public.image public.composite-content", "odi"},
    {"public.camera-raw-image", "public.image", "raw"},
    {"com.adobe.raw-image", "public.camera-raw-image", "dng"},
    {"com.canon.cr2-raw-image", "public.camera-raw-image", "cr2"},
    {"com.canon.cr3-raw-image", "public.camera-raw-image", "cr3"},
    {"com.canon.crw-raw-image", "public.camera-raw-image", "crw"},
    {"com.nikon.raw-image", "public.camera-raw-image", "nef"},
    {"com.nikon.nrw-raw-image", "public.camera-raw-image", "nrw"},
    {"com.sony.arw-raw-image", "public.camera-raw-image", "arw"},
    {"com.sony.raw-image", "public.camera-raw-image", "srf"},
    {"com.sony.sr2-raw-image", "public.camera-raw-image", "sr2"},
    {"com.olympus.raw-image", "public.camera-raw-image", "orf"},
    {"com.fuji.raw-image", "public.camera-raw-image", "raf"},
    {"com.panasonic.rw2-raw-image", "public.camera-raw-image", "rw2"},
    {"com.leica.rwl-raw-image", "public.camera-raw-image", "rwl"},
    {"com.pentax.raw-image", "public.camera-raw-image", "pef"},
    {"com.kodak.raw-image", "public.camera-raw-image", "dcr"},
    {"com.epson.raw-image", "public.camera-raw-image", "erf"},
    {"com.konicaminolta.raw-image", "public.camera-raw-image", "mrw"},
    {"com.hasselblad.3fr-raw-image", "public.camera-raw-image", "3fr"},
    {"com.hasselblad.fff-raw-image", "public.camera-raw-image", "fff"},
    {"com.phaseone.raw-image", "public.camera-raw-image", "iiq"},

    // Video. "ts" is a transport stream, whoever writes TypeScript.
    {"com.apple.quicktime-movie", "public.movie", "mov qt"},
    {"public.mpeg-4", "public.movie", "mp4 mpg4"},
    {"com.apple.m4v-video", "public.movie", "m4v"},
    {"public.avi", "public.movie", "avi"},
    {"org.webmproject.webm", "public.movie", "webm"},
    {"public.mpeg", "public.movie", "mpg mpeg"},
    {"public.mpeg-2-video", "public.video", "m2v"},
    {"public.mpeg-2-transport-stream", "public.movie", "ts"},
    {"public.avchd-mpeg-2-transport-stream", "public.movie", "mts m2ts"},
    {"com.microsoft.windows-media-wmv", "public.movie", "wmv"},
    {"com.adobe.flash.video", "public.movie", "flv f4v"},
    {"public.3gpp", "public.movie", "3gp"},
    {"public.3gpp2", "public.movie", "3g2"},
    {"public.dv-movie", "public.movie", "dv"},
    {"org.smpte.mxf", "public.movie", "mxf"},
    {"com.real.realmedia", "public.movie", "rm"},

    // Audio
    {"public.mp3", "public.audio", "mp3"},
    {"public.mpeg-4-audio", "public.audio", ""},
    {"com.apple.m4a-audio", "public.mpeg-4-audio", "m4a"},
    {"com.apple.protected-mpeg-4-audio-b", "public.mpeg-4-audio", "m4b"},
    {"com.apple.protected-mpeg-4-audio", "public.mpeg-4-audio", "m4p"},
    {"com.apple.mpeg-4-ringtone", "public.mpeg-4-audio", "m4r"},
    {"public.aac-audio", "public.audio", "aac"},
    {"com.microsoft.waveform-audio", "public.audio", "wav"},
    {"public.aiff-audio", "public.audio", "aif aiff"},
    {"public.aifc-audio", "public.audio", "aifc"},
    {"org.xiph.flac", "public.audio", "flac"},
    {"com.microsoft.windows-media-wma", "public.audio", "wma"},
    {"com.apple.coreaudio-format", "public.audio", "caf"},
    {"public.midi-audio", "public.audio", "mid midi"},
    {"public.ac3-audio", "public.audio", "ac3"},
    {"public.au-audio", "public.audio", "au snd"},
    {"org.3gpp.adaptive-multi-rate-audio", "public.audio", "amr"},
    {"com.soundblaster.soundfont", "public.audio", "sf2"},

    // PDF
    {"com.adobe.pdf", "public.data public.composite-content", "pdf"},

    // Archives
    {"com.pkware.zip-archive", "public.data public.archive", ""},
    {"public.zip-archive", "com.pkware.zip-archive", "zip"},
    {"public.tar-archive", "public.data public.archive", "tar"},
    {"org.gnu.gnu-zip-archive", "public.data public.archive", "gz gzip"},
    {"org.gnu.gnu-zip-tar-archive", "org.gnu.gnu-zip-archive", "tgz"},
    {"public.bzip2-archive", "public.data public.archive", "bz2"},
    {"public.tar-bzip2-archive", "public.bzip2-archive", "tbz tbz2"},
    {"org.tukaani.xz-archive", "public.data public.archive", "xz"},
    {"org.tukaani.tar-xz-archive", "org.tukaani.xz-archive", "txz"},
    {"org.7-zip.7-zip-archive", "public.data public.archive", "7z"},
    {"public.z-archive", "public.data public.archive", "z"},
    {"public.cpio-archive", "public.data public.archive", "cpio"},
    {"public.pax-archive", "public.data public.archive", "pax"},
    {"com.apple.xar-archive", "public.data public.archive", "xar"},
    {"com.apple.xip-archive", "public.data public.archive", "xip"},
    {"com.apple.archive", "public.data public.archive", "aar yaa"},
    {"com.apple.bom-compressed-cpio", "public.data public.archive", "cpgz"},
    {"com.allume.stuffit-archive", "public.data public.archive", "sit sitx"},
    {"com.apple.binhex-archive", "public.data public.archive", "hqx"},
    {"com.apple.macbinary-archive", "public.data public.archive", "bin"},
    {"com.apple.applesingle-archive", "public.data public.archive", "as"},
    {"public.uuencoded-archive", "public.data public.archive", "uu"},
    {"com.sun.java-archive", "public.zip-archive", "jar"},
    {"com.sun.web-application-archive", "com.sun.java-archive", "war"},
    {"com.google.android.apk", "public.zip-archive", "apk"},
    {"com.apple.itunes.ipa", "public.zip-archive", "ipa"},
    {"com.microsoft.cab", "public.data public.archive", "cab"},
    {"com.microsoft.excel.sheet.binary.macroenabled", "public.zip-archive public.spreadsheet", "xlsb"},

    // Text
    {"public.rtf", "public.text", "rtf"},
    {"public.html", "public.text", "html htm shtml"},
    {"public.xhtml", "public.xml", "xhtml"},
    {"public.json", "public.text", "json"},
    {"public.yaml", "public.text", "yaml yml"},
    {"public.delimited-values-text", "public.text", ""},
    {"public.comma-separated-values-text", "public.delimited-values-text", "csv"},
    {"public.tab-separated-values-text", "public.delimited-values-text", "tsv"},
    {"public.css", "public.text", "css"},
    {"com.netscape.javascript-source", "public.script", "js mjs"},
    {"public.python-script", "public.script", "py"},
    {"public.ruby-script", "public.script", "rb"},
    {"public.perl-script", "public.script", "pl"},
    {"public.php-script", "public.script", "php"},
    {"public.swift-source", "public.source-code", "swift"},
    {"com.apple.rez-source", "public.source-code", "r"},
    {"public.c-header", "public.source-code", "h"},
    {"public.c-source", "public.source-code", "c"},
    {"public.objective-c-source", "public.source-code", "m"},
    {"public.objective-c-plus-plus-source", "public.source-code", "mm"},
    {"public.c-plus-plus-source", "public.source-code", "cc cpp"},
    {"public.c-plus-plus-header", "public.source-code", "hpp"},
    {"com.sun.java-source", "public.source-code", "java"},
    {"org.rust-lang.source", "public.source-code", "rs"},
    {"public.bash-script", "public.shell-script", "bash"},
    {"public.zsh-script", "public.shell-script", "zsh"},
    {"public.csh-script", "public.shell-script", "csh"},
    {"public.assembly-source", "public.source-code", "s"},
    {"public.fortran-90-source", "public.source-code", "f90"},
    {"public.patch-file", "public.text", "diff patch"},
    {"com.apple.log", "public.plain-text", "log"},
    {"com.apple.crashreport", "public.plain-text", "crash ips"},
    {"com.apple.ical.ics", "public.text", "ics"},
    {"com.apple.ical.vcs", "public.text", "vcs"},
    {"public.vcard", "public.text", "vcf"},
    {"org.w3.webvtt", "public.text", "vtt"},
    {"public.m3u-playlist", "public.text", "m3u m3u8"},
    {"com.apple.applescript.text", "public.script", "applescript"},
    {"com.apple.applescript.script", "public.script", "scpt"},
    {"public.geometry-definition-format", "public.text", "obj"},
    {"org.khronos.collada.digital-asset-exchange", "public.xml", "dae"},
    {"com.apple.mobileconfig", "public.xml", "mobileconfig"},
    {"com.sun.java-web-start", "public.xml", "jnlp"},

    // Presentations, spreadsheets, word processing
    {"org.openxmlformats.openxml", "public.data", ""},
    {"com.microsoft.powerpoint.ppt", "public.data public.presentation", "ppt"},
    {"com.microsoft.powerpoint.pps", "public.data public.presentation", "pps"},
    {"org.openxmlformats.presentationml.presentation", "org.openxmlformats.openxml public.presentation",
     "pptx"},
    {"org.openxmlformats.presentationml.slideshow", "org.openxmlformats.openxml public.presentation", "ppsx"},
    {"org.openxmlformats.presentationml.template", "org.openxmlformats.openxml public.presentation", "potx"},
    {"org.openxmlformats.presentationml.presentation.macroenabled",
     "org.openxmlformats.openxml public.presentation", "pptm"},
    {"org.oasis-open.opendocument.presentation", "public.data public.presentation", "odp"},
    {"com.apple.iwork.keynote.sffkey", "public.data public.presentation", "key"},
    {"com.microsoft.excel.xls", "public.data public.spreadsheet", "xls xlt xlw"},
    {"org.openxmlformats.spreadsheetml.sheet", "org.openxmlformats.openxml public.spreadsheet", "xlsx"},
    {"org.openxmlformats.spreadsheetml.sheet.macroenabled", "org.openxmlformats.openxml public.spreadsheet",
     "xlsm"},
    {"org.openxmlformats.spreadsheetml.template", "org.openxmlformats.openxml public.spreadsheet", "xltx"},
    {"org.oasis-open.opendocument.spreadsheet", "public.data public.spreadsheet", "ods"},
    {"com.apple.iwork.numbers.sffnumbers", "public.data public.spreadsheet public.composite-content",
     "numbers"},
    {"com.microsoft.word.doc", "public.data public.composite-content", "doc dot"},
    {"org.openxmlformats.wordprocessingml.document", "org.openxmlformats.openxml public.composite-content",
     "docx"},
    {"org.openxmlformats.wordprocessingml.document.macroenabled",
     "org.openxmlformats.openxml public.composite-content", "docm"},
    {"org.openxmlformats.wordprocessingml.template", "org.openxmlformats.openxml public.composite-content",
     "dotx"},
    {"org.openxmlformats.wordprocessingml.template.macroenabled",
     "org.openxmlformats.openxml public.composite-content", "dotm"},
    {"com.apple.iwork.pages.sffpages", "public.data public.composite-content", "pages"},

    // Declared, and none of the above
    {"com.apple.property-list", "public.data", "plist"},
    {"org.oasis-open.opendocument.text", "public.data public.composite-content", "odt"},
    {"org.oasis-open.opendocument.graphics", "public.data public.composite-content", "odg"},
    {"org.oasis-open.opendocument.text-template", "public.data public.composite-content", "ott"},
    {"org.idpf.epub-container", "public.data public.composite-content", "epub"},
    {"com.adobe.encapsulated-postscript", "public.data", "eps"},
    {"com.adobe.postscript", "public.data", "ps"},
    {"com.microsoft.advanced-systems-format", "public.data", "asf"},
    {"com.apple.webarchive", "public.data public.composite-content", "webarchive"},
    {"com.apple.web-internet-location", "public.data", "webloc"},
    {"com.microsoft.internet-shortcut", "public.data", "url"},
    {"com.microsoft.windows-executable", "public.data public.executable", "exe"},
    {"com.microsoft.windows-dynamic-link-library", "public.data public.executable", "dll"},
    {"public.object-code", "public.data public.executable", "o"},
    {"com.apple.mach-o-dylib", "public.data public.executable", "dylib"},
    {"com.sun.java-class", "public.data public.executable", "class"},
    {"public.truetype-ttf-font", "public.font", "ttf"},
    {"public.opentype-font", "public.font", "otf"},
    {"public.truetype-collection-font", "public.font", "ttc"},
    {"com.apple.truetype-datafork-suitcase-font", "public.font", "dfont"},
    {"public.x509-certificate", "public.data", "cer crt pem"},
    {"com.rsa.pkcs-12", "public.data", "p12"},
    {"com.pixar.universal-scene-description-mobile", "public.data", "usdz"},
    {"public.standard-tesselated-geometry-format", "public.data", "stl"},
    {"com.apple.mobileprovision", "public.data", "mobileprovision"},
    {"com.apple.mail.email", "public.data", "eml"},
    {"com.apple.mail.emlx", "public.data", "emlx"},
    {"com.microsoft.excel.xla", "public.data", "xla"},

    // Folders that are shown as one thing
    {"com.apple.application", "public.executable", ""},
    {"com.apple.application-bundle", "com.apple.application com.apple.bundle com.apple.package", "app"},
    {"com.apple.generic-bundle", "com.apple.bundle com.apple.package", "bundle"},
    {"com.apple.framework", "com.apple.bundle", "framework"},
    {"com.apple.plugin", "com.apple.bundle com.apple.package", "plugin"},
    {"com.apple.kernel-extension", "com.apple.bundle com.apple.package", "kext"},
    {"com.apple.application-and-system-extension", "com.apple.bundle com.apple.package",
     "appex systemextension"},
    {"com.apple.metadata-importer", "com.apple.bundle com.apple.package", "mdimporter"},
    {"com.apple.quicklook-generator", "com.apple.bundle com.apple.package", "qlgenerator"},
    {"com.apple.systempreference.prefpane", "com.apple.bundle com.apple.package", "prefpane"},
    {"com.apple.audio-unit-component", "com.apple.bundle com.apple.package", "component"},
    {"com.apple.dashboard-widget", "com.apple.bundle com.apple.package", "wdgt"},
    {"com.apple.xpc-service", "com.apple.bundle com.apple.package", "xpc"},
    {"com.apple.rtfd", "com.apple.package public.composite-content", "rtfd"},
    {"com.apple.applescript.script-bundle", "com.apple.bundle com.apple.package", "scptd"},
    {"com.apple.automator-workflow", "com.apple.package", "workflow"},
    {"com.apple.installer-package", "com.apple.package", "pkg"},
    {"com.apple.installer-meta-package", "com.apple.package", "mpkg"},
    {"com.apple.disk-image-sparse-bundle", "public.disk-image com.apple.package", "sparsebundle"},
    {"com.apple.photos.library", "com.apple.package", "photoslibrary"},
    {"com.apple.iphoto.library", "com.apple.package", "photolibrary migratedphotolibrary"},
    {"com.apple.aperture.library", "com.apple.package", "aplibrary migratedaplibrary"},
    {"com.apple.imovie.library", "com.apple.package", "imovielibrary"},
    {"com.apple.music.library", "com.apple.package", "musiclibrary"},
    {"com.apple.tv.library", "com.apple.package", "tvlibrary"},
    {"com.apple.finalcutpro.library", "com.apple.package", "fcpbundle"},
    {"com.apple.garageband.project", "com.apple.package", "band"},
    {"com.apple.logicx.project", "com.apple.package", "logicx"},
    {"com.apple.iwork.pages.pages", "com.apple.package public.composite-content", "pages"},
    {"com.apple.iwork.keynote.key", "com.apple.package public.presentation", "key"},
    {"com.apple.iwork.numbers.numbers", "com.apple.package public.spreadsheet public.composite-content",
     "numbers"},
    {"com.apple.xcode.project", "com.apple.package", "xcodeproj"},
    {"com.apple.xcode.workspace", "com.apple.package", "xcworkspace"},
    {"com.apple.xcode.archive", "com.apple.package", "xcarchive"},
    {"com.apple.xcode.dsym", "com.apple.package", "dsym"},
    {"com.apple.dt.playground", "com.apple.package", "playground"},
};

constexpr std::size_t kLongestExtension = 24;

char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool equalIgnoringAsciiCase(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, [](char x, char y) { return lowered(x) == lowered(y); });
}

template <class Visit>
void forEachWord(std::string_view words, Visit visit) {
    while (!words.empty()) {
        const auto end = std::min(words.find(' '), words.size());
        visit(words.substr(0, end));
        words.remove_prefix(std::min(end + 1, words.size()));
    }
}

class Table {
  public:
    Table() {
        std::unordered_map<std::string_view, const Declaration*> declared;
        for (const auto& declaration : kDeclarations) {
            declared.emplace(declaration.identifier, &declaration);
        }
        for (const auto& declaration : kDeclarations) {
            const auto& type =
                m_types.emplace(declaration.identifier, treeOf(declaration, declared)).first->second;
            auto& byExtension = type.conformsTo("public.data") ? m_files : m_folders;
            forEachWord(declaration.extensions,
                        [&](std::string_view extension) { byExtension.emplace(extension, &type); });
        }
    }

    const ContentType& named(std::string_view identifier) const { return m_types.at(identifier); }
    const ContentType* file(std::string_view extension) const { return find(m_files, extension); }
    const ContentType* folder(std::string_view extension) const { return find(m_folders, extension); }

  private:
    using ByExtension = std::unordered_map<std::string_view, const ContentType*>;

    // Breadth first, so that nearer types stand before more general ones.
    static ContentType treeOf(const Declaration& declaration,
                              const std::unordered_map<std::string_view, const Declaration*>& declared) {
        std::vector<std::string_view> tree = {declaration.identifier};
        for (std::size_t i = 0; i < tree.size(); ++i) {
            forEachWord(declared.at(tree[i])->conformsTo, [&](std::string_view parent) {
                if (std::ranges::find(tree, parent) == tree.end()) {
                    tree.push_back(parent);
                }
            });
        }
        return ContentType(std::move(tree));
    }

    static const ContentType* find(const ByExtension& types, std::string_view extension) {
        std::array<char, kLongestExtension> buffer{};
        if (extension.empty() || extension.size() > buffer.size()) {
            return nullptr;
        }
        std::ranges::transform(extension, buffer.begin(), lowered);
        const auto found = types.find(std::string_view(buffer.data(), extension.size()));
        return found == types.end() ? nullptr : found->second;
    }

    std::unordered_map<std::string_view, ContentType> m_types; // its nodes never move
    ByExtension m_files;
    ByExtension m_folders;
};

// Those that are longer than it has bits share the last one.
std::uint64_t bitOfLength(std::string_view identifier) {
    return std::uint64_t{1} << std::min<std::size_t>(identifier.size(), 63);
}

const Table& table() {
    static const Table instance;
    return instance;
}

} // namespace

ContentType::ContentType(std::vector<std::string_view> tree)
    : m_tree(std::move(tree)) {
    for (const auto member : m_tree) {
        m_lengths |= bitOfLength(member);
    }
    m_isPackage = conformsTo("com.apple.package");
}

bool ContentType::is(std::string_view identifier) const {
    return equalIgnoringAsciiCase(m_tree.front(), identifier);
}

bool ContentType::conformsTo(std::string_view identifier) const {
    return (m_lengths & bitOfLength(identifier)) != 0 &&
           std::ranges::any_of(
               m_tree, [&](std::string_view member) { return equalIgnoringAsciiCase(member, identifier); });
}

namespace ContentTypes {

const ContentType& ofFile(std::string_view extension) {
    static const ContentType& unknown = table().named("public.data");
    const auto* const declared = table().file(extension);
    return declared != nullptr ? *declared : unknown;
}

const ContentType& ofFolder(std::string_view extension) {
    const auto* const declared = table().folder(extension);
    return declared != nullptr ? *declared : folder();
}

const ContentType& symbolicLink() {
    static const ContentType& type = table().named("public.symlink");
    return type;
}

const ContentType& folder() {
    static const ContentType& type = table().named("public.folder");
    return type;
}

const ContentType& otherItem() {
    static const ContentType& type = table().named("public.item");
    return type;
}

} // namespace ContentTypes
} // namespace quillane
