#include "Components/Symbols.h"
#include "Onboarding/Slide.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

struct Words {
    const char* symbol; // empty for none
    const char* title;
    const char* body;
};

constexpr Words kPages[] = {
    {"", "Welcome to Quillane",
     "Finder shows you the app. Quillane shows you everything underneath it \u2014 the caches, containers "
     "and support "
     "files an app leaves behind, and the disk you get back by clearing them."},
    {"square.stack.3d.up", "Four places disk hides",
     "App caches that rebuild themselves. Files abandoned by apps you deleted years ago. Developer build "
     "products and "
     "package caches. And your own large, old, forgotten downloads."},
    {"checklist", "Nothing moves without you",
     "Every removal shows you the full list of paths first, each with its own checkbox. Confirming moves "
     "them to the "
     "Trash \u2014 never deletes \u2014 and Put Back restores the last cleanup in one click."},
    {"lock.shield", "One permission",
     "macOS protects the Trash, app containers, and your Desktop and Documents. Granting Full Disk Access "
     "lets "
     "Quillane see them. It only takes effect after a relaunch, and you can do it later from the banner."},
    {"sparkles", "Start with the Overview",
     "The first screen shows how much can come back right now. Review and Clean opens the list. That's the "
     "whole "
     "loop."},
};

TEST(WelcomeSlides, SayTheirWordsToTheLetterInTheirOrder) {
    const auto& slides = welcomeSlides();
    ASSERT_EQ(slides.size(), std::size(kPages));
    for (std::size_t i = 0; i < slides.size(); ++i) {
        EXPECT_EQ(slides[i].title.toStdString(), kPages[i].title);
        EXPECT_EQ(slides[i].body.toStdString(), kPages[i].body);
        EXPECT_EQ(slides[i].symbol.value_or(QString()).toStdString(), kPages[i].symbol);
    }
}

TEST(WelcomeSlides, HaveSymbolsThatExistButForTheFirst) {
    for (const auto& slide : welcomeSlides()) {
        EXPECT_EQ(slide.symbol.has_value(), &slide != &welcomeSlides().front());
        EXPECT_TRUE(!slide.symbol || Symbols::exists(*slide.symbol)) << slide.symbol->toStdString();
    }
}

} // namespace
} // namespace quillane
