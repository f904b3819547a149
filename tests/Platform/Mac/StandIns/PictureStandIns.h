#pragma once
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

// The system's workspace, its pictures and Quick Look, as far as the Mac's adapters call them. Begun with
// StandIn::begin() and beginPictures().
namespace quillane::StandIn {

void beginPictures();

// A picture as the system has it: colours multiplied by their alpha, rows from the top.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgba{};
};
// Of whatever is asked for; none gives none.
void setIcon(const std::optional<Picture>& picture);
struct IconRequest {
    std::string path;
    double side = 0;     // points of the place
    double ownSide = 0;  // of the image that was asked to draw
    double lentSide = 0; // of the image that the system lends, which is not ours to change
};
std::vector<IconRequest> iconRequests();
// Contexts and colour spaces that were made and not released.
int drawingObjects();

std::vector<std::string> opened(); // the addresses
std::vector<std::vector<std::string>> revealed();
int ends(); // of the program, that it asked for

// Quick Look.
struct ThumbnailRequest {
    std::string location;
    double width = 0;
    double height = 0;
    double scale = 0;
    unsigned long types = 0;
    bool isCancelled = false;
};
std::vector<ThumbnailRequest> thumbnailRequests();
enum class Answer { atOnce, never };
// With which it answers; nothing for a failure.
void setThumbnail(const std::optional<Picture>& picture, Answer answer = Answer::atOnce);
// When a thumbnail is asked for, before an answer.
void setWhenAsked(std::function<void()> deed);
// The answer to the last request after all.
void answerLate();

} // namespace quillane::StandIn
