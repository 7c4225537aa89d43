#!/usr/bin/python3
"""Runs clang-tidy over the sources of a build and prints the findings.

    tidy.py BUILD [SOURCE...]    only the sources whose paths end with one of the arguments

A source that passed is not checked again until it, a header that it includes, or the checks change. The results are
stored in the user's cache. Exits with 1 if there are findings.
"""

import hashlib
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor

TIDY = "clang-tidy-14"
OWN = re.compile(r"/(src|tests|bench)/[^/].*\.cpp$")
passed = pathlib.Path(os.environ.get("XDG_CACHE_HOME", "~/.cache")).expanduser() / "tarno" / "tidy"


def sources(build, wanted):
    """Returns the compile command of each of our own sources as a list of words, by path."""
    commands = json.loads((build / "compile_commands.json").read_text())
    own = {command["file"]: shlex.split(command["command"]) for command in commands
           if OWN.search(command["file"]) and "/build/" not in command["file"]}
    return {path: words for path, words in own.items() if not wanted or path.endswith(tuple(wanted))}


def fingerprint(words, checks):
    """Returns a hash of everything that the result of clang-tidy depends on."""
    compiler = words[next(at for at, word in enumerate(words) if re.search(r"(c\+\+|g\+\+)[-0-9]*$", word)):]
    output = compiler.index("-o")
    preprocess = compiler[:output] + compiler[output + 2:] + ["-E", "-C", "-P"]
    text = subprocess.run(preprocess, capture_output=True, check=True).stdout
    return hashlib.sha256(checks + text).hexdigest()


def check(build, checks, path, words):
    """Returns the output of clang-tidy for the source, or an empty string if it passes."""
    known = passed / fingerprint(words, checks)
    if known.exists():
        known.touch()
        return ""
    run = subprocess.run([TIDY, "--quiet", "-p", str(build), path], capture_output=True, text=True)
    if run.returncode == 0:
        known.touch()
        return ""
    return run.stdout + run.stderr


def main(build, *wanted):
    passed.mkdir(parents=True, exist_ok=True)
    found = sources(build, wanted)
    version = subprocess.run([TIDY, "--version"], capture_output=True, check=True).stdout
    checks = version + b"".join(path.read_bytes() for path in (pathlib.Path(".clang-tidy"),
                                                               pathlib.Path("tests/.clang-tidy")))
    failed = 0
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        results = pool.map(lambda item: (item[0], check(build, checks, *item)), found.items())
        for number, (path, text) in enumerate(results, 1):
            print(f"[{number}/{len(found)}] {os.path.relpath(path)}", flush=True)
            if text:
                failed += 1
                print(text, flush=True)
    print(f"{len(found)} sources, findings in {failed}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve(), *sys.argv[2:]))
