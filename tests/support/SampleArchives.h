#pragma once
#include <string>
#include <vector>

// Archives whose members are stored as they are.
namespace quillane::SampleArchives {

struct Member {
    std::string name;
    std::string content;
};

std::string zip(const std::vector<Member>& members);
std::string tar(const std::vector<Member>& members);

} // namespace quillane::SampleArchives
