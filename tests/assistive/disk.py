"""What lies on the volume of the sample, told apart so closely that what was moved away and back is the same."""

import os


def contents(volume):
    """By path: what an entry is. Folders change when something goes from them, so only that they are there counts, and
    the Trash may come into being."""
    entries = {}
    for folder, folders, files in os.walk(volume):
        for name in folders + files:
            path = os.path.join(folder, name)
            about = os.lstat(path)
            is_folder = name in folders and not os.path.islink(path)
            told = "folder" if is_folder else (about.st_ino, about.st_size, about.st_mtime_ns, about.st_mode)
            entries[os.path.relpath(path, volume)] = told
    entries.pop("Users/alex/.Trash", None)
    return entries


def uppermost(paths):
    """Without those that lie in another of them."""
    found = []
    for path in sorted(paths):
        if not found or not path.startswith(found[-1] + "/"):
            found.append(path)
    return found
