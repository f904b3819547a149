#include "Onboarding/Slide.h"

namespace quillane {

const std::vector<Slide>& welcomeSlides() {
    static const std::vector<Slide> slides = {
        {std::nullopt, QStringLiteral("Welcome to Quillane"),
         QStringLiteral("Finder shows you the app. Quillane shows you everything underneath it — the caches, "
                        "containers and support files an app leaves behind, and the disk you get back by "
                        "clearing them."),
         Tint::Link},
        {QStringLiteral("square.stack.3d.up"), QStringLiteral("Four places disk hides"),
         QStringLiteral("App caches that rebuild themselves. Files abandoned by apps you deleted years ago. "
                        "Developer build products and package caches. And your own large, old, forgotten "
                        "downloads."),
         Tint::Developer},
        {QStringLiteral("checklist"), QStringLiteral("Nothing moves without you"),
         QStringLiteral("Every removal shows you the full list of paths first, each with its own checkbox. "
                        "Confirming moves them to the Trash — never deletes — and Put Back restores the last "
                        "cleanup in one click."),
         Tint::Green},
        {QStringLiteral("lock.shield"), QStringLiteral("One permission"),
         QStringLiteral("macOS protects the Trash, app containers, and your Desktop and Documents. Granting "
                        "Full Disk Access lets Quillane see them. It only takes effect after a relaunch, and "
                        "you can do it later from the banner."),
         Tint::Apps},
        {QStringLiteral("sparkles"), QStringLiteral("Start with the Overview"),
         QStringLiteral("The first screen shows how much can come back right now. Review and Clean opens the "
                        "list. That's the whole loop."),
         Tint::Link},
    };
    return slides;
}

} // namespace quillane
