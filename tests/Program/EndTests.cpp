// How the program ends, tried with the program.
#include "ProgramTest.h"

namespace quillane {
namespace {

struct EndOfProgram : ProgramTest {};

TEST_F(EndOfProgram, AskedByTheSystemItEndsAsByItsOwnCommand) {
    folder.folder("home");
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        Start start;
        startAndWait(start, bus.address());
        start.send(signal);
        EXPECT_EQ(start.status(), 0) << signal << start.words(); // a signal that nobody heard tells -1
    }
}

} // namespace
} // namespace quillane
