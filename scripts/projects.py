#!/usr/bin/env python3
"""Makes made-up projects that are well formed, on one machine folder that has all that they need, and runs
bxvbwiz generate --strict on each: no run may find an error or a warning.
usage: projects.py [COUNT [SEED]]      BXVBWIZ and MAKEPE name the programs (default: those of build/native)
"""
import os
import pathlib
import random
import shutil
import subprocess
import sys
import tempfile
import uuid

repository = pathlib.Path(__file__).resolve().parent.parent
bxvbwiz = os.environ.get("BXVBWIZ", repository / "build/native/bin/bxvbwiz")
makepe = os.environ.get("MAKEPE", repository / "build/native/bin/makepe")
registry = []


def write(path, lines):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes("".join(line + "\r\n" for line in lines).encode("cp1252"))


def make(path, *options):
    path.parent.mkdir(parents=True, exist_ok=True)
    subprocess.run([makepe, path, *options], check=True, stdout=subprocess.DEVNULL)


def register(name, identifier, version):
    key = "HKEY_CLASSES_ROOT\\TypeLib\\{%s}\\%s\\0\\win32" % (identifier, version)
    registry.extend(["", "[%s]" % key, '@="C:\\\\windows\\\\system32\\\\%s"' % name])


def make_libraries(system, count):
    """Controls and libraries of the system folder: each registers itself; some have a .dep file, some need a DLL."""
    libraries = []
    for number in range(count):
        kind = random.choice(["ocx", "dll"])
        name = "Part%d.%s" % (number, kind)
        needs = ["Need%d.dll" % number] if random.random() < 0.5 else []
        imports = ["--import", "KERNEL32.DLL"]
        if needs and random.random() < 0.5:
            imports += ["--import", needs[0]]
        for needed in needs:
            make(system / needed, "--import", "KERNEL32.DLL", "--export", "Draw")
        make(system / name, *imports, "--export", "DllRegisterServer", "--export", "DllUnregisterServer")
        if needs:
            write(system / ("Part%d.dep" % number),
                  ["[%s]" % name, "Dest=$(WinSysPath)", "Register=$(DLLSelfRegister)"]
                  + ["Uses%d=%s" % (i + 1, needed) for i, needed in enumerate(needs)]
                  + [line for needed in needs for line in ("[%s]" % needed, "Dest=$(WinSysPath)", "Register=")])
        identifier = str(uuid.UUID(int=random.getrandbits(128))).upper()
        version = "%d.%d" % (random.randint(1, 9), random.randint(0, 9))
        register(name, identifier, version)
        libraries.append((name, kind, identifier, version))
    return libraries


def make_project(folder, number, libraries):
    name = "Project%d" % number
    chosen = random.sample(libraries, random.randint(0, min(6, len(libraries))))
    lines = ["Type=Exe", "Reference=*\\G{00020430-0000-0000-C000-000000000046}#2.0#0#"
             "C:\\WINDOWS\\system32\\stdole2.tlb#OLE Automation"]
    controls = []
    for file, kind, identifier, version in chosen:
        if kind == "ocx":
            lines.append("Object={%s}#%s#0; %s" % (identifier, version, file))
            controls.append((file, identifier, version))
        else:
            lines.append("Reference=*\\G{%s}#%s#0#C:\\WINDOWS\\system32\\%s#%s" % (identifier, version, file, file))
    for form in range(max(1, random.randint(0, 3))):
        # Every control is on the first form; others have some of them.
        used = controls if form == 0 else random.sample(controls, random.randint(0, len(controls)))
        write(folder / ("Form%d.frm" % form),
              ["VERSION 5.00"] + ['Object = "{%s}#%s#0"; "%s"' % (i, v, f) for f, i, v in used]
              + ["Begin VB.Form Form%d" % form]
              + ["   Begin %s.Item Item%d\r\n   End" % (f.split(".")[0], n) for n, (f, _, _) in enumerate(used)]
              + ["End", 'Attribute VB_Name = "Form%d"' % form])
        lines.append("Form=Form%d.frm" % form)
    lines += ['ExeName32="%s.exe"' % name, 'Name="%s"' % name, "MajorVer=%d" % random.randint(1, 9), "MinorVer=0",
              "RevisionVer=%d" % random.randint(0, 99), 'VersionCompanyName="Made-up Works"']
    write(folder / (name + ".vbp"), lines)
    make(folder / (name + ".exe"), "--import", "MSVBVM60.DLL")
    return "C:\\Src\\%s\\%s.vbp" % (name, name)


def lay_out(machine, count):
    """Makes the machine and its projects; gives their paths."""
    subprocess.run([bxvbwiz, "machine", "new", machine], check=True, stdout=subprocess.DEVNULL)
    system = next(path for path in (machine / "drive_c").rglob("*") if path.name.lower() == "system32")
    make(system / "MSVBVM60.DLL", "--import", "KERNEL32.DLL", "--export", "ThunRTMain")
    (system / "stdole2.tlb").write_bytes(b"")
    register("stdole2.tlb", "00020430-0000-0000-C000-000000000046", "2.0")
    libraries = make_libraries(system, 12)
    projects = [make_project(machine / "drive_c/Src" / ("Project%d" % i), i, libraries) for i in range(count)]
    with open(machine / "registry.reg", "ab") as file:
        file.write("".join(line + "\r\n" for line in registry).encode("cp1252"))
    return projects


def main():
    numbers = sys.argv[1:]
    if len(numbers) > 2 or not all(number.isdigit() for number in numbers):
        print(__doc__, end="")
        return 2
    count, seed = map(int, numbers + ["1000", "1"][len(numbers):])
    random.seed(seed)
    work = pathlib.Path(tempfile.mkdtemp())
    try:
        clean = failed = 0
        machine = work / "machine"
        for first in range(0, count, 100):  # other libraries for every hundred
            registry.clear()
            shutil.rmtree(machine, ignore_errors=True)
            for project in lay_out(machine, min(100, count - first)):
                run = subprocess.run([bxvbwiz, "generate", project, "--machine", machine, "--strict"],
                                     stdin=subprocess.DEVNULL, capture_output=True, text=True)
                if run.returncode == 0:
                    clean += 1
                    continue
                failed += 1
                if failed == 1:
                    kept = pathlib.Path(tempfile.mkdtemp()) / "machine"
                    shutil.copytree(machine, kept)
                    print("%s on %s ends with %d:\n%s" % (project, kept, run.returncode, run.stderr))
        print("%d of %d projects without an error or a warning" % (clean, count))
        return int(failed > 0)
    finally:
        shutil.rmtree(work)


sys.exit(main())
