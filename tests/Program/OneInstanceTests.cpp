// One program a person, tried with the program.
#include "ProgramTest.h"
#include <QDBusMessage>

namespace quillane {
namespace {

struct OneInstance : ProgramTest {};

TEST_F(OneInstance, ASecondStartEndsAndTheFirstGoesOnWhateverBusEachHas) {
    folder.folder("home");
    PrivateBus other;
    for (const auto& [ofFirst, ofSecond] :
         {std::pair{bus.address(), bus.address()}, std::pair{bus.address(), other.address()},
          std::pair{bus.address(), kNoBus}, std::pair{kNoBus, bus.address()}, std::pair{kNoBus, kNoBus}}) {
        SCOPED_TRACE(ofFirst.toStdString() + ", " + ofSecond.toStdString());
        Start first;
        startAndWait(first, ofFirst);
        EXPECT_EQ(hasOwner(), ofFirst != kNoBus);
        Start second;
        start(second, ofSecond);
        EXPECT_EQ(second.status(), 0) << second.words();
        EXPECT_TRUE(first.runs()) << first.words();
    }
}

TEST_F(OneInstance, WhileTheFirstIsStoppedASecondStartSaysSoAndEnds) {
    folder.folder("home");
    Start first;
    startAndWait(first, bus.address());
    first.send(SIGSTOP);
    for (const auto& address : {bus.address(), kNoBus}) {
        Start second;
        start(second, address);
        EXPECT_EQ(second.status(), 1);
        EXPECT_EQ(second.words(),
                  "Quillane is already running, here or on another machine, and does not answer.\n");
    }
    first.send(SIGCONT);
    EXPECT_TRUE(isUp());
    EXPECT_TRUE(first.runs());
}

TEST_F(OneInstance, AfterTheFirstWasKilledTheNextStartIsTheFirst) {
    folder.folder("home");
    for (const auto& address : {bus.address(), kNoBus}) {
        Start first;
        startAndWait(first, address);
        first.kill();
        Start next;
        startAndWait(next, address);
        EXPECT_EQ(hasOwner(), address != kNoBus);
    }
}

TEST_F(OneInstance, OnABusThatHasStoppedThereIsOneProgramToo) {
    folder.folder("home");
    bus.freeze();
    Start first;
    startAndWait(first, bus.address());
    Start second;
    start(second, bus.address());
    EXPECT_EQ(second.status(), 0) << second.words();
    EXPECT_TRUE(first.runs());
    bus.thaw();
}

TEST_F(OneInstance, TheDesktopCallsTheProgramOnTheBus) {
    folder.folder("home");
    Start first;
    startAndWait(first, bus.address());
    auto call = QDBusMessage::createMethodCall(kName, QStringLiteral("/org/quillane/Quillane"),
                                               QStringLiteral("org.freedesktop.Application"),
                                               QStringLiteral("ActivateAction"));
    for (const auto* section : {"Startup", "no section"}) {
        call.setArguments(
            {QStringLiteral("show-section"), QVariantList{QString::fromLatin1(section)}, QVariantMap()});
        EXPECT_EQ(bus.connect().call(call, QDBus::Block, kLong).type(), QDBusMessage::ReplyMessage);
    }
    EXPECT_TRUE(first.runs()) << first.words();
}

TEST_F(OneInstance, OneThatIsRelaunchedComesUpWhenTheOtherHasGone) {
    folder.folder("home");
    Start old;
    startAndWait(old, bus.address());
    Start anew;
    start(anew, bus.address(), {QStringLiteral("--relaunched")});
    old.end();
    while (anew.runs() && !isUp()) {
    }
    EXPECT_TRUE(anew.runs()) << anew.words();
    EXPECT_TRUE(hasOwner());
}

} // namespace
} // namespace quillane
