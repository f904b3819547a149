#pragma once
#include <archive.h>
#include <archive_entry.h>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillane {

struct ZipMember {
    std::string name;
    std::string content;
};

enum class ZipPacking { deflated, stored, encrypted };

// An archive as office programs write it.
inline std::string zipOf(const std::vector<ZipMember>& members, ZipPacking packing = ZipPacking::deflated) {
    std::size_t room = std::size_t{64} << 10U;
    for (const auto& member : members) {
        room += member.content.size() + 2 * member.name.size() + 1024;
    }
    std::string bytes(room, '\0');
    std::size_t used = 0;
    archive* const writer = ::archive_write_new();
    ::archive_write_set_format_zip(writer);
    if (packing == ZipPacking::stored) {
        ::archive_write_zip_set_compression_store(writer);
    } else if (packing == ZipPacking::encrypted) {
        ::archive_write_set_options(writer, "zip:encryption=zipcrypt");
        ::archive_write_set_passphrase(writer, "secret");
    }
    ::archive_write_set_bytes_in_last_block(writer, 1);
    EXPECT_EQ(::archive_write_open_memory(writer, bytes.data(), bytes.size(), &used), ARCHIVE_OK);
    for (const auto& [name, content] : members) {
        archive_entry* const entry = ::archive_entry_new();
        ::archive_entry_set_pathname(entry, name.c_str());
        ::archive_entry_set_size(entry, static_cast<la_int64_t>(content.size()));
        ::archive_entry_set_filetype(entry, AE_IFREG);
        ::archive_entry_set_perm(entry, 0644);
        EXPECT_EQ(::archive_write_header(writer, entry), ARCHIVE_OK) << name;
        EXPECT_EQ(::archive_write_data(writer, content.data(), content.size()),
                  static_cast<la_ssize_t>(content.size()));
        ::archive_entry_free(entry);
    }
    EXPECT_EQ(::archive_write_close(writer), ARCHIVE_OK);
    ::archive_write_free(writer);
    bytes.resize(used);
    return bytes;
}

// A text document with a paragraph of these words.
inline std::string docxOf(std::string_view words) {
    const auto xml = "<w:document><w:body><w:p><w:r><w:t>" + std::string(words) +
                     "</w:t></w:r></w:p></w:body></w:document>";
    return zipOf({{"[Content_Types].xml", "<Types>no words</Types>"}, {"word/document.xml", xml}});
}

// A PDF with a page of these lines, in a font that every reader has. `trailer` may hold more than it needs.
inline std::string pdfOf(const std::vector<std::string>& lines, const std::string& trailer = "") {
    std::string page = "BT /F1 12 Tf 72 720 Td 14 TL\n";
    for (const auto& line : lines) {
        page += "(" + line + ") Tj T*\n";
    }
    page += "ET\n";
    const std::vector<std::string> objects = {
        "<< /Type /Catalog /Pages 2 0 R >>", "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
        "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Contents 4 0 R /Resources << /Font << /F1 5 0 "
        "R >> >> >>",
        "<< /Length " + std::to_string(page.size()) + " >>\nstream\n" + page + "endstream",
        "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>"};
    std::string pdf = "%PDF-1.4\n";
    std::string table = "0000000000 65535 f \n";
    for (std::size_t i = 0; i < objects.size(); ++i) {
        const auto offset = std::to_string(pdf.size());
        table += std::string(10 - offset.size(), '0') + offset + " 00000 n \n";
        pdf += std::to_string(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const auto begin = std::to_string(pdf.size());
    return pdf + "xref\n0 6\n" + table + "trailer\n<< /Size 6 /Root 1 0 R " + trailer + " >>\nstartxref\n" +
           begin + "\n%%EOF\n";
}

// A file and what accidents make of it: cut at `count` places, and with a bit of `count` bytes turned over.
inline std::vector<std::string> damaged(const std::string& file, std::size_t count) {
    std::vector<std::string> files;
    std::mt19937 random(20);
    for (std::size_t i = 0; i < count; ++i) {
        files.push_back(file.substr(0, file.size() * i / count));
        auto turned = file;
        auto& byte = turned[random() % turned.size()];
        byte = static_cast<char>(static_cast<unsigned char>(byte) ^ (1U << random() % 8));
        files.push_back(std::move(turned));
    }
    return files;
}

} // namespace quillane
