"""Writes what the linker needs in place of the Mac's libraries: text stubs (.tbd) with the names that exist.

Frameworks: the classes and constants of our own declarations. Libraries: what Debian's builds of them export.
A file whose content stays the same is left alone, so that nothing is built anew; one that is not written any more goes."""
import pathlib
import re
import subprocess
import sys

sdk, llvm = map(pathlib.Path, sys.argv[1:])
declarations = pathlib.Path(__file__).parent / "declarations"


written = {sdk / "usr/lib/libSystem.tbd"}


def write(path, text):
    written.add(path)
    path.parent.mkdir(parents=True, exist_ok=True)
    if not path.is_file() or path.read_text() != text:
        path.write_text(text)


def stub(install, symbols=(), classes=()):
    lines = ["--- !tapi-tbd", "tbd-version: 4", "targets: [ arm64-macos ]", f"install-name: '{install}'", "exports:",
             "  - targets: [ arm64-macos ]"]
    if symbols:
        lines.append("    symbols: [ " + ", ".join(f"'{name}'" for name in sorted(symbols)) + " ]")
    if classes:
        lines.append("    objc-classes: [ " + ", ".join(sorted(classes)) + " ]")
    return "\n".join(lines + ["..."]) + "\n"


def exported(library):
    listing = subprocess.run(["nm", "-D", "--defined-only", library], capture_output=True, text=True, check=True)
    return {"_" + line.split()[-1].split("@")[0] for line in listing.stdout.splitlines()}


def library(name):
    found = subprocess.run(["clang++-19", f"-print-file-name=lib{name}.so"], capture_output=True, text=True, check=True)
    return found.stdout.strip()


def with_types_of_a_mac(names):
    """Adds the names that the same functions have where strings and functions are libc++'s, int64_t is a long long and a FILE has another tag."""
    string = "NSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE"
    # How std::__1 is said again depends on what a name has said before it.
    strings = {name.replace("B5cxx11", "").replace(string, f"NSt3__112basic_stringIcN{again}11char_traitsIcEEN{again}9allocatorIcEEEE")
               for name in names if "cxx11" in name for again in ("S_", "S0_", "S1_", "S2_", "S3_")}
    numbers = {re.sub(r"El(?=[A-Z]|$)", "Ex", name) for name in names if "icu_" in name}
    streams = {name.replace("P8_IO_FILE", "P7__sFILE") for name in names}
    # What a name says again is counted, and std::__1 is one thing more that it has said.
    functions = {re.sub(r"St8functionI(F[^E]*E)E",
                        lambda told: f"NSt3__18functionI{told[1].replace('S1_', 'S2_')}EE", name) for name in names}
    waits = {re.sub(r"(libcpp_atomic_\w*wait\w*EPVKv)[il]$", r"\1x", name) for name in names}
    return names | strings | numbers | streams | functions | waits


write(sdk / "usr/lib/libc++.tbd",
      stub("/usr/lib/libc++.1.dylib",
           with_types_of_a_mac(exported(llvm / "lib/libc++.so.1.0") | exported(llvm / "lib/libc++abi.so.1.0"))))
for name in ["icuuc", "icui18n", "pugixml", "archive", "Qt6Core", "Qt6Gui", "Qt6Widgets", "Qt6Svg", "Qt6Network", "Qt6Test"]:
    write(sdk / f"packages/lib/lib{name}.tbd",
          stub(f"/opt/stand-in/lib{name}.dylib", with_types_of_a_mac(exported(library(name)))))

write(sdk / "usr/lib/libz.tbd", stub("/usr/lib/libz.1.dylib", exported(library("z"))))

# The entry points that clang emits for ARC and literals; public in the compiler's documentation.
arc = """autorelease autoreleasePoolPop autoreleasePoolPush autoreleaseReturnValue copyWeak destroyWeak enumerationMutation
initWeak loadWeak loadWeakRetained moveWeak release retain retainAutorelease retainAutoreleaseReturnValue
retainAutoreleasedReturnValue retainBlock storeStrong storeWeak unsafeClaimAutoreleasedReturnValue alloc alloc_init
opt_class opt_isKindOfClass opt_new opt_respondsToSelector opt_self msgSend msgSendSuper2 getProperty setProperty
setProperty_atomic setProperty_nonatomic setProperty_nonatomic_copy setProperty_atomic_copy copyStruct""".split()
# What is called of the runtime by name.
runtime = """class_getInstanceMethod class_getMethodImplementation class_replaceMethod method_getImplementation
method_getTypeEncoding object_getClass""".split()
registers = [f"objc_{call}_x{n}" for call in ("release", "retain") for n in range(30)]
write(sdk / "usr/lib/libobjc.tbd",
      stub("/usr/lib/libobjc.A.dylib",
           ["_objc_" + name for name in arc] + ["_" + name for name in registers + runtime] +
           ["__objc_empty_cache", "__objc_empty_vtable", "___objc_personality_v0", "___isPlatformVersionAtLeast"],
           ["NSObject"]))

kept = {}
for header in sorted(declarations.glob("*/*.h")):
    framework = header.parent.name
    text = header.read_text()
    place = sdk / "System/Library/Frameworks" / f"{framework}.framework"
    write(place / "Headers" / header.name, text)
    classes, symbols = kept.setdefault(framework, (set(), set()))
    classes |= set(re.findall(r"^@interface (\w+)\b(?! \()", text, re.M))
    plain = re.sub(r"\s+API_AVAILABLE\(macos\([\d.]+\)\)", "", text)
    for line in re.findall(r"^QD_EXTERN ([^;]*);", plain, re.M):
        symbols.add("_" + re.search(r"(\w+)(\(.*)?$", line, re.S).group(1))
kept["CoreFoundation"][1].add("___CFConstantStringClassReference")
for framework, (classes, symbols) in kept.items():
    write(sdk / "System/Library/Frameworks" / f"{framework}.framework" / f"{framework}.tbd",
          stub(f"/System/Library/Frameworks/{framework}.framework/Versions/A/{framework}", symbols, classes))

for folder in "System", "packages/lib", "usr/lib":
    for path in sorted((sdk / folder).rglob("*"), reverse=True): # what lies in a folder before the folder
        if path.is_file() and path not in written:
            path.unlink()
        elif path.is_dir() and not any(path.iterdir()):
            path.rmdir()
