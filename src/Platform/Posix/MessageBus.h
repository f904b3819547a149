#pragma once
#include <chrono>
#include <string>
#include <string_view>

namespace quillane {

// Whether a message bus has stopped: whether something takes a connection there and then says nothing. Libraries of the
// bus wait for such a one for most of a minute, and meanwhile hold up all who reach for any bus; of one that is not
// there they tell at once. Any thread.
namespace MessageBus {

// Where the buses are, in the bus's own form, by the environment and else where systems have them. Empty where that is
// not known.
std::string sessionAddress();
std::string systemAddress();

// Greets the first of the addresses that can be reached and waits for a word, `patience` at most. False where there is
// nothing to reach, and where an address is of a kind that is not known here. Below a millisecond for a bus at work.
bool hasStopped(std::string_view addresses,
                std::chrono::milliseconds patience = std::chrono::milliseconds(700));

// For the main function, before there are threads: a session bus that has stopped is none for this process, and for
// the programs that it starts, as long as it runs.
void leaveStoppedSessionBus();

} // namespace MessageBus

} // namespace quillane
