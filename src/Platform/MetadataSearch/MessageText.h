#pragma once
#include <string_view>

namespace quillane {

class TextSink;

// What is written in a mail (EML, and EMLX, which counts the bytes of the mail before it): its subject and its people,
// and its texts and web pages, those of mails within it among them. Other attachments are not looked at.
namespace MessageText {

inline constexpr int kDeepest = 4; // parts within one another

void add(std::string_view bytes, TextSink& sink);

} // namespace MessageText
} // namespace quillane
