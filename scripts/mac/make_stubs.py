"""Writes, for the linker, a stub of every framework that is declared: make_stubs.py FOLDER."""
import sys
from pathlib import Path

import declarations
import mach_o

TARGETS = '[ x86_64-macos, arm64-macos ]'
# https://developer.apple.com/documentation/objectivec/objective-c_runtime, and what the compiler calls there by itself
RUNTIME = ('OBJC_EHTYPE_id', '__objc_personality_v0', '_objc_empty_cache', 'objc_alloc', 'objc_alloc_init', 'objc_autorelease',
           'objc_autoreleasePoolPop', 'objc_autoreleasePoolPush', 'objc_begin_catch', 'objc_copyCppObjectAtomic', 'objc_copyStruct',
           'objc_end_catch', 'objc_enumerationMutation', 'objc_exception_rethrow', 'objc_exception_throw', 'objc_getProperty',
           'objc_msgSend', 'objc_msgSendSuper2', 'objc_msgSendSuper2_stret', 'objc_msgSend_stret', 'objc_opt_class',
           'objc_opt_isKindOfClass', 'objc_opt_new', 'objc_opt_respondsToSelector', 'objc_opt_self', 'objc_release', 'objc_retain',
           'objc_setProperty', 'objc_setProperty_atomic', 'objc_setProperty_nonatomic', 'sel_isEqual')
# What the compiler makes of a text between quotation marks
COMPILED = {'CoreFoundation': ['__CFConstantStringClassReference']}


def stub(installName, symbols, classes):
    return f"""--- !tapi-tbd
tbd-version: 4
targets: {TARGETS}
install-name: '{installName}'
exports:
  - targets: {TARGETS}
    symbols: [ {', '.join(f"'_{name}'" for name in symbols)} ]
    objc-classes: [ {', '.join(classes)} ]
...
"""


def main(folder):
    for name in declarations.frameworks():
        all_ = declarations.readFramework(name)
        symbols = sorted(one.name for one in all_ if one.kind in ('function', 'constant')) + COMPILED.get(name, [])
        classes = sorted(one.name for one in all_ if one.kind == 'class')
        path = Path(folder) / f'{name}.framework' / f'{name}.tbd'
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(stub(mach_o.installName(name), symbols, classes))
    (Path(folder) / 'libobjc.tbd').write_text(stub('/usr/lib/libobjc.A.dylib', RUNTIME, ['NSObject']))


if __name__ == '__main__':
    main(sys.argv[1])
