"""What the scripts that compare whole processes have in common."""
import os
import statistics
import subprocess
import sys

BENCHMARKS = os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "build/benchmark/benchmarks")


def run(command):
    """CPU seconds, wall seconds, peak memory in MiB."""
    done = subprocess.run([os.path.join(BENCHMARKS, "walk/measured")] + command, capture_output=True, text=True)
    if done.returncode != 0:
        sys.exit("%s failed: %s" % (command[0], done.stderr))
    cpu, wall, peak = done.stdout.split()
    return float(cpu), float(wall), float(peak) / 1024


def forget(root):
    """Drops what memory holds of the files below a folder, and nothing else."""
    for folder, _, names in os.walk(root):
        for name in names:
            file = os.open(os.path.join(folder, name), os.O_RDONLY)
            os.fsync(file)  # what is not on the disk yet is not dropped
            os.posix_fadvise(file, 0, 0, os.POSIX_FADV_DONTNEED)
            os.close(file)


def measure(commands, rounds, cold=None):
    """Medians; everything from memory, or of a folder from the disk."""
    results = {name: [] for name in commands}
    for command in [] if cold else commands.values():
        run(command)  # everything comes from memory from now on
    for _ in range(rounds):
        for name, command in commands.items():
            if cold:
                forget(cold)
            results[name].append(run(command))
    return {name: tuple(statistics.median(column) for column in zip(*rows)) for name, rows in results.items()}


def count(root):
    files = folders = 0
    for _, below, names in os.walk(root):
        folders += len(below)
        files += len(names)
    return files, folders
