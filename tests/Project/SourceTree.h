#pragma once
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

// The sources of the tree that the tests were built from.
struct Source {
    std::string path; // relative to the root of the tree, with forward slashes
    std::string text;
};

// Empty for a file that can't be read.
inline std::string readFile(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    std::stringstream text;
    text << stream.rdbuf();
    return text.str();
}

inline std::vector<Source> sourcesBelow(const std::string& folder) {
    namespace fs = std::filesystem;
    const fs::path root = QUILLANE_SOURCE_DIR;
    std::vector<Source> sources;
    for (const auto& entry : fs::recursive_directory_iterator(root / folder)) {
        const auto extension = entry.path().extension();
        if (extension == ".h" || extension == ".cpp" || extension == ".mm") {
            sources.push_back({fs::relative(entry.path(), root).generic_string(), readFile(entry.path())});
        }
    }
    return sources;
}

// One a line, for the message of a failed test.
inline std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const auto& line : lines) {
        text += line + "\n";
    }
    return text;
}
