#pragma once
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

// The system, as far as the Mac's adapters call it, with its user. Main thread. Each test begins with begin().
namespace quillane::StandIn {

void begin();

// The program's own folder.
struct Bundle {
    std::string path = "/Applications/Quillane.app";
    std::string identifier = "org.quillane.Quillane"; // empty for none
    std::map<std::string, std::string> information{};
    std::string frameworks{}; // the path of the folder; empty for none
};
void setBundle(const Bundle& bundle);

// Notifications.
struct Request {
    std::string identifier;
    std::string title;
    std::string body;
    bool hasSound = false;
    bool hasTrigger = false;
};
std::vector<Request> requests();
unsigned long askedPermissions(); // the options; 0 before anything was asked
bool hasDelegate();
// What the user does with the request of that number, from 0. How often the system was told that it is done.
enum class Deed { click, dismiss };
int act(std::size_t request, Deed deed);
// A click on one that holds more than texts.
int clickOnForeign();
// The system's answer to the question for permission, on a thread of its own.
void answerPermission();
// The options with which a notification shows while the program is in front, and how often they were told.
std::pair<unsigned long, int> presentation();

// The menu bar, on the first of two screens, which is 900 points high.
struct MenuBar {
    int items = 0;
    std::string title;
    std::string label; // as VoiceOver reads it
    std::string image;
    bool isTemplate = false;
    unsigned long imagePosition = 0;
    bool hasMenu = false; // that a click opens
};
MenuBar menuBar();
struct Line {
    std::string words; // empty for a rule
    bool isEnabled = true;
    friend bool operator==(const Line&, const Line&) = default;
};
// The menu that was opened last, and how often one was.
std::vector<Line> openedMenu();
int menusOpened();
// While a menu is open.
void setWhileOpen(std::function<void()> deed);
// Chooses that line of the menu that was opened last.
void choose(std::size_t line);
enum class Button { left, right, none };
void click(Button button, bool isControlHeld = false, double x = 1'230, double y = 888);
void setShown(bool isShown);
// The drawings of the bundle.
void setDrawing(const std::string& name);

// The look.
void setLook(const std::string& appearance);
void setDisplayOptions(bool isContrastHigh, bool isMotionReduced);
// Tells what has changed of the latter, by the centre that is meant, or by the default one, which is not.
void tellDisplayOptions(bool byTheWorkspace = true);

// Sparkle, which the bundle carries from now on.
void carrySparkle();
struct Sparkle {
    bool wasStarted = false;
    int checks = 0;
    bool isAutomatic = false;
    bool isAutomaticStored = false; // with the server of the settings
};
Sparkle sparkle();
void setSparkle(bool canCheck, double lastCheck);

// Who runs, by the numbers of their processes, under the identifier that is asked for.
void setRunning(const std::string& identifier, const std::vector<int>& processes);
struct Activation {
    int process = 0;
    unsigned long options = 0;
    friend bool operator==(const Activation&, const Activation&) = default;
};
std::vector<Activation> activations();
// When a process was launched, as the system tells it: seconds since the reference date.
void setLaunch(int process, double date);
// The bundle of all that run; empty for a bare executable.
void setRunningBundle(const std::string& path);
// Bundles that were opened as the Finder opens them, by their addresses, and those of which the system has told, on a
// thread of its own, that it has done so.
std::vector<std::string> openedBundles();
int toldOpenings();

// How often the main thread's queue was asked for, to hear of something there.
int mainQueues();
// How many observe something of an object.
int observers();

} // namespace quillane::StandIn
