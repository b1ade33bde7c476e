"""Checks a preference pane that was built for a Mac: check_bundle.py BUNDLE SOURCES."""
import plistlib
import re
import sys
from pathlib import Path

import declarations
import mach_o

SYSTEM = ['/usr/lib/libSystem.B.dylib', '/usr/lib/libobjc.A.dylib']
# On a Mac nothing may say where the client's files lie.
FORBIDDEN = ['CorvaneRoot', 'CORVANE_ROOT']


def classesOf(sources):
    """The Objective-C classes that the sources for a Mac define."""
    files = [path for path in Path(sources).rglob('*.mm') if 'gnustep' not in path.parts]
    return {name for path in files for name in re.findall(r'^@implementation (\w+)\b(?! *\()', path.read_text(), re.M)}


def faults(bundle, sources):
    contents = bundle / 'Contents'
    with (contents / 'Info.plist').open('rb') as file:
        info = plistlib.load(file)
    for key in ('CFBundleName', 'CFBundleIdentifier', 'CFBundleExecutable', 'NSPrincipalClass'):
        if not info.get(key):
            yield f'Info.plist has no {key}'
    for file in ('Resources/Corvane.icns', 'Resources/qlhelper', 'MacOS/qlhelper'):
        if not (contents / file).exists():
            yield f'{file} is missing'
    frameworks = [mach_o.installName(name) for name in declarations.frameworks()]
    classes = classesOf(sources) | {info['NSPrincipalClass']}
    for program, wanted in ((info['CFBundleExecutable'], classes), ('qlhelper', set())):
        for fault in mach_o.faults(contents / 'MacOS' / program, wanted, SYSTEM + frameworks, FORBIDDEN):
            yield f'MacOS/{program} {fault}'
    print(f'checked: {len(classes)} classes for both architectures, symbols from {len(frameworks)} frameworks and the system')


def main(bundle, sources):
    found = list(faults(Path(bundle), sources))
    for fault in found:
        print(f'{bundle}: {fault}')
    return 1 if found else 0


if __name__ == '__main__':
    sys.exit(main(*sys.argv[1:]))
