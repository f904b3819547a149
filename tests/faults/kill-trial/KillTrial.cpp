// Kills the program again and again over one home folder and compares every file after each kill.
// Usage: kill_trial KILLS [SEED [FOLDER]]. The folder must be empty; without one it is a temporary folder. The seed
// gives the home, the plans and the moments that are counted in calls; those that are a time differ from run to run.
#include "Life.h"
#include "TemporaryFolder.h"
#include "TrialHome.h"
#include "Verdict.h"
#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <poll.h>
#include <string>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace quillane;

namespace {

using Steady = std::chrono::steady_clock;

enum class Moment { none, afterACall, inAWrite, anyTime };
constexpr int kSorts = 6; // of plans

Step writes(Random& random, int most) {
    return {Step::Kind::writes, upTo(random, most), {}, false};
}

Step putBack() {
    return {Step::Kind::putBack, 0, {}, false};
}

// Some of what lies at home, and now and then what has been protected since.
Step sweep(Random& random, const TrialHome& home, bool empties) {
    Step step{Step::Kind::sweep, 0, {}, empties};
    for (const auto& item : home.items()) {
        if (item.isAtHome()) {
            step.rows.push_back(item.path);
        }
    }
    std::ranges::shuffle(step.rows, random);
    step.rows.resize(std::min<std::size_t>(step.rows.size(), 1 + static_cast<std::size_t>(upTo(random, 7))));
    if (upTo(random, 1) == 0) {
        step.rows.insert(step.rows.begin(), TrialHome::kProtected);
    }
    return step;
}

std::vector<Step> stepsOf(int sort, Random& random, const TrialHome& home) {
    switch (sort) {
    case 0:
        return {writes(random, 30)};
    case 1:
        return {writes(random, 3), sweep(random, home, false), writes(random, 3)};
    case 2:
        return {sweep(random, home, true), writes(random, 3)};
    case 3:
        return {putBack(), writes(random, 3)};
    case 4:
        return {sweep(random, home, false), putBack()};
    default:
        return {putBack(), sweep(random, home, false)};
    }
}

// Until the process ends by itself, or for this long.
void waitForEnd(pid_t process, std::chrono::microseconds longest) {
    const int handle = static_cast<int>(::syscall(SYS_pidfd_open, process, 0));
    pollfd ended = {handle, POLLIN, 0};
    const timespec limit = {longest.count() / 1'000'000, longest.count() % 1'000'000 * 1'000};
    (void)::ppoll(&ended, 1, &limit, nullptr);
    ::close(handle);
}

class Trial {
  public:
    Trial(const std::string& folder, std::uint64_t seed)
        : m_random(seed)
        , m_home(folder + "/home", m_random) {
        void* shared =
            ::mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        if (shared == MAP_FAILED) {
            std::perror("mmap");
            std::exit(2); // NOLINT(concurrency-mt-unsafe): there are no threads
        }
        m_progress = new (shared) Progress;
    }

    // False when something was wrong after a kill.
    bool run(int kills) {
        while (m_kills < kills) {
            if (!liveOnce()) {
                return false;
            }
            if (m_kills % 500 == 0 && m_kills != m_told) {
                m_told = m_kills;
                tell();
            }
        }
        tell();
        return true;
    }

  private:
    bool liveOnce() {
        m_home.fill();
        if (upTo(m_random, 2) == 0) {
            m_home.removeEmptiedFolders();
        }
        const int sort = upTo(m_random, kSorts - 1);
        auto moment = static_cast<Moment>(upTo(m_random, 3));
        if (moment == Moment::none && upTo(m_random, 3) != 0) {
            moment = Moment::anyTime; // few lives are whole; they tell how long others may be
        }
        Plan plan{"Cleanup " + std::to_string(++m_lives), stepsOf(sort, m_random, m_home)};
        auto& whole = m_wholes[static_cast<std::size_t>(sort)];
        if (moment == Moment::afterACall) {
            plan.callsToLive = 1 + upTo(m_random, static_cast<int>(whole.calls));
        } else if (moment == Moment::inAWrite) {
            plan.writesToLive = 1 + upTo(m_random, static_cast<int>(whole.writes));
        }
        const auto time = std::chrono::microseconds(upTo(m_random, static_cast<int>(whole.time.count())));
        return judge(plan, moment, runLife(plan, moment, time, whole));
    }

    struct Whole {
        long calls = 500;
        long writes = 20;
        std::chrono::microseconds time{20'000};
    };

    int runLife(const Plan& plan, Moment moment, std::chrono::microseconds time, Whole& whole) {
        m_progress->begun = m_progress->ended = 0;
        m_progress->calls = m_progress->writeCalls = 0;
        m_progress->failures = 0;
        m_progress->writesBegun = m_progress->writesEnded = m_stored.writes;
        const auto began = Steady::now();
        const pid_t process = ::fork();
        if (process == 0) {
            live(m_home.home(), m_home.path(TrialHome::kProtected), plan, *m_progress);
        }
        if (moment == Moment::anyTime) {
            waitForEnd(process, time);
            ::kill(process, SIGKILL);
        }
        int status = 0;
        ::waitpid(process, &status, 0);
        if (WIFEXITED(status)) { // a little more, so that the end is among the moments too
            whole.calls = m_progress->calls * 21 / 20 + 1;
            whole.writes = m_progress->writeCalls * 21 / 20;
            whole.time =
                std::chrono::duration_cast<std::chrono::microseconds>(Steady::now() - began) * 21 / 20;
        }
        return status;
    }

    bool judge(const Plan& plan, Moment moment, int status) {
        const bool isKilled = WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
        if (isKilled) {
            ++m_kills;
            ++m_killsOf[static_cast<std::size_t>(moment)];
            const bool isInside = m_progress->begun > m_progress->ended;
            const auto step = static_cast<std::size_t>(m_progress->ended);
            ++m_killsIn[isInside ? static_cast<std::size_t>(plan.steps[step].kind) : m_killsIn.size() - 1];
        }
        const Verdict verdict(m_home, m_stored, plan, *m_progress, m_tally);
        for (const auto& problem : verdict.problems()) {
            std::printf("life %d: %s\n", m_lives, problem.c_str());
        }
        const bool isRight =
            isKilled || (WIFEXITED(status) && WEXITSTATUS(status) == 0 && m_progress->failures == 0);
        if (!isRight) {
            std::printf("life %d ended with status %x and %d failures\n", m_lives,
                        static_cast<unsigned>(status), m_progress->failures.load());
        }
        return isRight && verdict.problems().empty();
    }

    void tell() const {
        const auto seconds =
            std::chrono::duration_cast<std::chrono::seconds>(Steady::now() - m_began).count();
        std::printf("%d kills (%d after a call, %d after half a write, %d at any time) in %d lives, %lld s\n",
                    m_kills, m_killsOf[1], m_killsOf[2], m_killsOf[3], m_lives,
                    static_cast<long long>(seconds));
        std::printf("  while settings were written %d, in a sweep %d, in a put back %d, between %d\n",
                    m_killsIn[0], m_killsIn[1], m_killsIn[2], m_killsIn[3]);
        std::printf("  in the middle of emptying %d, of a sweep %d, of a put back %d; half deleted items %d; "
                    "stray records at most %zu\n",
                    m_tally.emptyingsInTheMiddle, m_tally.sweepsInTheMiddle, m_tally.putBacksInTheMiddle,
                    m_tally.remainders, m_tally.strayRecords);
        std::printf(
            "  items laid %llu, settings written %lld; compared %llu files, folders and links, %llu MB\n",
            static_cast<unsigned long long>(m_home.laid()), static_cast<long long>(m_stored.writes),
            static_cast<unsigned long long>(m_tally.pieces),
            static_cast<unsigned long long>(m_tally.bytes / 1'000'000));
        std::fflush(stdout);
    }

    Random m_random;
    TrialHome m_home;
    Stored m_stored;
    Tally m_tally;
    Progress* m_progress = nullptr;
    const Steady::time_point m_began = Steady::now();
    int m_lives = 0;
    int m_kills = 0;
    int m_told = 0;
    std::array<int, 4> m_killsOf{}; // by moment
    std::array<int, 4> m_killsIn{}; // by the step, the last between two
    std::array<Whole, kSorts> m_wholes;
};

} // namespace

int main(int argc, char** argv) {
    const int kills = argc > 1 ? std::atoi(argv[1]) : 0; // NOLINT(cert-err34-c): 0 is refused
    const auto seed = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1;
    if (kills <= 0 || argc > 4) {
        std::fprintf(stderr, "Usage: kill_trial KILLS [SEED [FOLDER]]\n");
        return 2;
    }
    if (argc == 4) {
        return Trial(argv[3], seed).run(kills) ? 0 : 1;
    }
    const TemporaryFolder folder;
    return Trial(folder.path(), seed).run(kills) ? 0 : 1;
}
