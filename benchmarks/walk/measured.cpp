// Runs a program with its output dropped and prints its CPU seconds, wall seconds and peak memory in KiB. Small
// itself, because on Linux the peak of a child is never told below that of whoever started it.
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace {

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fputs("usage: measured PROGRAM [ARGUMENT...]\n", stderr);
        return 2;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    const auto begin = std::chrono::steady_clock::now();
    pid_t child = 0;
    if (posix_spawnp(&child, argv[1], &actions, nullptr, argv + 1, environ) != 0) {
        std::perror(argv[1]);
        return 1;
    }
    int status = 0;
    rusage usage = {};
    wait4(child, &status, 0, &usage);
    const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - begin;
    std::printf("%.6f %.6f %ld\n", seconds(usage.ru_utime) + seconds(usage.ru_stime), wall.count(),
                usage.ru_maxrss);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}
