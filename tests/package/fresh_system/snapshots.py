"""What trees hold, to be compared."""

import hashlib
import os
import stat


def snapshot(folder, without=()):
    """Of each path below the folder: kind, mode, owner, size, time, content. The folder's own is under ""."""
    found = {}
    for path in _walk(folder, {os.path.join(folder, name) for name in without}):
        found[path[len(folder) :].lstrip("/")] = of(path)
    return found


def of(path):
    """A folder's size and time say nothing of what was hidden in it and came back."""
    state = os.lstat(path)
    known = (stat.filemode(state.st_mode), state.st_uid, state.st_gid)
    if stat.S_ISREG(state.st_mode):
        return (*known, state.st_size, state.st_mtime_ns, _digest(path))
    return (*known, os.readlink(path)) if stat.S_ISLNK(state.st_mode) else known


def differences(before, after):
    """A line for each path that came, went or changed."""
    came = [f"came: {path} {after[path]}" for path in sorted(after.keys() - before.keys())]
    went = [f"went: {path} {before[path]}" for path in sorted(before.keys() - after.keys())]
    both = sorted(before.keys() & after.keys())
    changed = [f"changed: {path} {before[path]} -> {after[path]}" for path in both if before[path] != after[path]]
    return came + went + changed


def must_be_equal(before, after, what):
    found = differences(before, after)
    if found:
        raise AssertionError("\n".join([f"{what}:", *found]))


def _walk(path, without):
    if path in without:
        return
    yield path
    if os.path.isdir(path) and not os.path.islink(path):
        for name in sorted(os.listdir(path)):
            yield from _walk(os.path.join(path, name), without)


def _digest(path):
    with open(path, "rb") as file:
        return hashlib.file_digest(file, "blake2b").hexdigest()[:16]
