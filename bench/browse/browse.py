#!/usr/bin/env python3
"""From opening an archive to its tree: makes archives of many empty entries and runs bench_browse over each.

usage: browse.py BENCH_BROWSE [--folder FOLDER] [--most ENTRIES]
"""
import argparse
import json
import os
import subprocess
import tarfile
import tempfile
import zipfile


def name(number):
    return f"project/folder {number // 100:05d}/source file {number:07d}.cpp"


def make_zip(path, entries):
    with zipfile.ZipFile(path, "w") as archive:
        for number in range(entries):
            archive.writestr(zipfile.ZipInfo(name(number), (2024, 1, 1, 0, 0, 0)), b"")


def make_tar(path, entries):
    with tarfile.open(path, "w") as archive:
        for number in range(entries):
            archive.addfile(tarfile.TarInfo(name(number)))


def measure(program, path):
    """In a home of its own: nothing that another run left is swept."""
    with tempfile.TemporaryDirectory(dir=os.path.dirname(path)) as home:
        environment = dict(os.environ, HOME=home, XDG_CACHE_HOME=os.path.join(home, "cache"))
        result = subprocess.run([program, path], env=environment, capture_output=True, text=True, check=True)
        return json.loads(result.stdout)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("--folder", help="where archives and skeletons are made")
    parser.add_argument("--most", type=int, default=1_000_000)
    options = parser.parse_args()
    columns = "to tree s", "processor s", "skeleton s", "processor s", "filter s", "memory MiB", "worker MiB"
    print("| archive | " + " | ".join(columns) + " |\n|" + "---|" * (len(columns) + 1))
    with tempfile.TemporaryDirectory(dir=options.folder) as folder:
        for kind, make in ("zip", make_zip), ("tar", make_tar):
            for entries in (1_000, 10_000, 100_000, 1_000_000):
                if entries > options.most:
                    continue
                path = os.path.join(folder, f"{entries}.{kind}")
                make(path, entries)
                shown = measure(options.program, path)
                assert shown["entries"] == entries and shown["error"] == 0, shown
                assert shown["unplaced"] == 0, shown
                steps = ("open", "list", "tree")
                print("| %s, %s entries | %.3f | %.3f | %.3f | %.3f | %.3f | %.0f | %.0f |" % (
                    kind, f"{entries:,}", sum(shown[step] for step in steps),
                    sum(shown[step + "_cpu"] for step in steps) + shown["worker_cpu"],
                    shown["skeleton"], shown["skeleton_cpu"], shown["filter"], shown["peak"], shown["worker_peak"]),
                    flush=True)
                os.unlink(path)


if __name__ == "__main__":
    main()
