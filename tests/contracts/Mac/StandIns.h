#pragma once
#include "FileURL.h"
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

// What stands in for the system under the Mac's adapters, so that no test touches the user's Trash, settings or
// applications. Main thread.
namespace quillane::StandIns {

// An error of the platform: its domain and code, the outermost first, and then what lies below.
struct Cause {
    std::string domain;
    int code = 0;
};

struct Trashed {
    bool isDone = true;
    std::optional<FileURL> landed; // handed out also when it is not done
    std::vector<Cause> error;
};

// Answers for the system's move to the Trash from now on. Without one the system
// itself does.
void answerTrash(std::function<Trashed(const FileURL& item)> answer);

// A running application, as the workspace knows it.
struct Application {
    std::string identifier;
    int process = 0;
    bool isStubborn = false;
    bool isTerminated = false; // and still in the list
    int asked = 0;
};
// The applications that the workspace lists. One that is asked leaves the list, unless it is stubborn.
std::vector<Application>& applications();

// As on a machine on which this program never ran.
void forgetDefaults();
// As another hand stores what settings don't have: a dictionary.
void storeDictionary(const std::string& key);
// The same with a whole number without a sign.
void storeUnsigned(const std::string& key, std::uint64_t number);
// As if these held a text in which half of a character is missing, alone and in an array, until the settings are forgotten.
void answerHalfCharacter(const std::string& key, const std::string& arrayKey);
bool isStored(const std::string& key);
// Is called each time that the settings are about to be handed to the system, from now on.
void watchStoring(std::function<void()> watch);
// The same with each value that is taken away.
void watchRemoving(std::function<void(const std::string& key)> watch);

} // namespace quillane::StandIns
