#!/usr/bin/env python3
"""Runs bxvbwiz on a pseudo terminal: names in other scripts are shown whole, progress suits the
terminal, and Ctrl-C ends a run.
usage: terminal_test.py BXVBWIZ MAKEPE"""

import os
import pty
import re
import select
import shutil
import signal
import subprocess
import sys
import tempfile
import time

program, makepe = sys.argv[1:3]
scripts = os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', '..', 'scripts')
run = [os.path.join(scripts, 'wine.sh'), program] if program.endswith('.exe') else [program]
identifier = '{11111111-2222-3333-4444-555555555555}'


def on_terminal(arguments, prompt=None, keys=b'', terminal_kind='xterm'):
    """Runs the program, types the keys when the prompt is there, and gives its exit code and what was shown."""
    process, terminal = pty.fork()
    if process == 0:
        os.environ.update(LC_ALL='C.UTF-8', TERM=terminal_kind)
        os.execvp(run[0], run + arguments)
    signal.signal(signal.SIGALRM, lambda *_: os.kill(process, signal.SIGKILL))
    signal.alarm(50)
    shown = b''
    while True:
        # Wine takes keys only when the program waits for them.
        if prompt and prompt in shown and not select.select([terminal], [], [], 1)[0]:
            prompt = None
            os.write(terminal, keys)
        try:
            part = os.read(terminal, 65536)
        except OSError:  # the program has ended
            part = b''
        if not part:
            break
        shown += part
    code = os.waitstatus_to_exitcode(os.waitpid(process, 0)[1])
    text = shown.decode(errors='replace')
    return code, text if terminal_kind == 'dumb' else re.sub(r'\x1b\[[0-9;?]*[A-Za-z]|\r', '', text)


folder = tempfile.mkdtemp()
try:
    machine = os.path.join(folder, 'Mühle')
    os.environ['BXVBWIZ_MACHINE'] = machine
    subprocess.run(run + ['machine', 'new', machine], check=True, stdout=subprocess.DEVNULL, stdin=subprocess.DEVNULL)
    os.mkdir(machine + '/drive_c/Src')
    project = machine + '/drive_c/Src/Demo.vbp'
    with open(machine + '/machine.ini', 'r+b') as file:
        settings = file.read().replace(b'CodePage=1252', b'CodePage=932')
        file.seek(0)
        file.write(settings)
        file.truncate()
    with open(machine + '/registry.reg', 'ab') as file:
        file.write(f'\r\n[HKEY_CLASSES_ROOT\\TypeLib\\{identifier}\\2.0\\0\\win32]\r\n@="C:\\\\x.ocx"\r\n'.encode())
    with open(project, 'wb') as file:
        file.write(f'Type=Exe\r\nObject={identifier}#1.0#0; x.ocx\r\nName="日本語"\r\nExeName32="Demo.exe"\r\n'.encode('cp932'))
    subprocess.run([makepe, machine + '/drive_c/Src/Demo.exe'], check=True)

    code, shown = on_terminal(['analyse', project, '--no'])
    assert code == 0 and '日本語\n├─ Forms\n' in shown, (code, shown)
    code, shown = on_terminal(['generate', project, '--no'])
    assert code == 0 and 'Copying Files... [#' in shown, (code, shown)
    if not program.endswith('.exe'):
        code, shown = on_terminal(['generate', project, '--no'], terminal_kind='dumb')
        assert code == 0 and '\x1b' not in shown and shown.count('\nCopying Files...\r\n') == 1, (code, shown)
    # Other than Windows, Wine goes on waiting for the line.
    code, shown = on_terminal(['analyse', project], b'yes/no', b'\x03\r')
    assert code == 1 and 'interrupted\n' in shown and 'ended without finishing' in shown, (code, shown)
finally:
    shutil.rmtree(folder)
