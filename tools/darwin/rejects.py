"""Tries what the check must find: each source of tools/darwin/rejects is compiled as the Mac's adapters are, and must fail
with the words of its first line. Usage: rejects.py COMPILE_COMMANDS"""
import json
import pathlib
import re
import shlex
import subprocess
import sys

commands = json.loads(pathlib.Path(sys.argv[1]).read_text())
adapter = next(entry for entry in commands if entry["file"].endswith("src/Platform/Mac/FoundationTrash.mm"))
words = [word for word in shlex.split(adapter["command"]) if not word.startswith("CCACHE_")]
compiler = next(i for i, word in enumerate(words) if pathlib.Path(word).name.startswith("clang++"))
words = words[compiler:words.index("-o")] + ["-fsyntax-only"]
failures = 0
sources = sorted((pathlib.Path(__file__).parent / "rejects").glob("*.mm"))
for source in sources:
    expected = source.read_text().splitlines()[0].removeprefix("// Expected: ")
    told = subprocess.run([*words, str(source)], cwd=adapter["directory"], capture_output=True, text=True)
    if told.returncode == 0 or not re.search(r"error: .*" + expected, told.stderr):
        failures += 1
        print(f"check-darwin: {source.name} was to fail with: {expected}\n{told.stderr}", file=sys.stderr)
if not sources or failures:
    sys.exit(1)
print(f"{len(sources)} faults that were made on purpose are found")
