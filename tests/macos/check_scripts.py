"""Tests of the scripts that build and check for a Mac: check_scripts.py FOLDER. Everything wrong must be found."""
import hashlib
import struct
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, sys.argv.pop(1))
import check_interfaces
import declarations
import mach_o
import make_stubs

TYPINGS = """
declare const kThing: number;
declare const ThingKind: {
  Small: 1,
  Big: 2,
};
declare function MakeThing(a: number, callback: (p1: number, p2: number) => void): number;
declare class ThingContext {
  constructor(init?: ThingContext);
  version: number;
  info: interop.Pointer;
}
declare interface NSObjectProtocol {
  isEqual(object: interop.Object): boolean;
}
declare class NSObject extends NativeObject implements NSObjectProtocol {
  init(): this;
}
declare class Thing<T = interop.Object> extends NSObject {
  static thingWith<ObjectType, This extends abstract new (...args: any) => any>(this: This, one: ObjectType): InstanceType<This>;
  moveToSpeed(place: CGPoint, speed: number): void;
  readonly size: number;
  title: string;
}
"""


def parse(line):
    return list(declarations.cDeclaration(line, 'here'))


class ReadsDeclarations(unittest.TestCase):
    def test_everyKindOfLine(self):
        for line, kind, name, arguments in (
                ('void MakeThing(int a, void (*call)(int b, int c));', 'function', 'MakeThing', 2),
                ('double Now(void);', 'function', 'Now', 0),
                ('extern const CFAllocatorRef kThing;', 'constant', 'kThing', 0),
                ('static const NSInteger kOne = 1;', 'value', 'kOne', 0),
                ('typedef struct __Thing* ThingRef;', 'type', 'ThingRef', 0),
                ('typedef void (*CallBack)(int a);', 'type', 'CallBack', 0),
                ('static inline int Twice(int a) { return 2 * a; }', 'inline', 'Twice', 0)):
            one, = parse(line)
            self.assertEqual((one.kind, one.name, one.arguments), (kind, name, arguments), line)

    def test_selectors(self):
        for line, selector in (('- (void)run;', 'run'), ('- (void)run:(id)sender;', 'run:'),
                               ('- (BOOL)move:(void (*)(int))how to:(id<P>)place {', 'move:to:'),
                               ('+ (id)with:(id)first, ... __attribute__((sentinel));', 'with:')):
            self.assertEqual(declarations.selectorOf(line), selector)

    def test_aLineThatCannotBeReadIsAnError(self):
        for line in ('what is this', 'enum { kWithoutValue };'):
            with self.assertRaises(declarations.Malformed):
                parse(line)

    def test_theDeclarationsThemselvesAreReadAndHaveStubs(self):
        with tempfile.TemporaryDirectory() as folder:
            make_stubs.main(folder)
            for name in declarations.frameworks():
                self.assertTrue(declarations.readFramework(name), name)
                self.assertIn(mach_o.installName(name), (Path(folder) / f'{name}.framework/{name}.tbd').read_text())


class ChecksInterfaces(unittest.TestCase):
    def setUp(self):
        with tempfile.TemporaryDirectory() as folder:
            (Path(folder) / 'Things.d.ts').write_text(TYPINGS)
            self.typings = check_interfaces.Typings(folder)

    def fault(self, one):
        return check_interfaces.fault(one, self.typings)

    def expect(self, line, *faults):
        self.assertEqual([self.fault(one) for one in parse(line)], list(faults), line)

    def method(self, line, owner='Thing'):
        one, = declarations.member(line, owner, 'here')
        return self.fault(one)

    def test_functionsAndConstants(self):
        self.expect('int MakeThing(int a, void (*callback)(int b, int c));', None)
        self.expect('int MakeThing(int a);', 'takes [2] arguments, not 1')
        self.expect('int MakeThign(int a);', 'is no function')
        self.expect('extern const int kThing;', None)
        self.expect('extern const int kThign;', 'is no constant')

    def test_enumerators(self):
        self.expect('enum { kThingSmall = 1, kThingBig = 2 };  // ThingKind', None, None)
        self.expect('enum { kThingSmall = 2, kThingBigger = 2 };  // ThingKind', 'is [1], not 2', 'ThingKind has no such member')
        self.expect('enum { kThingSmall = 1 };  // ThingKinds', 'ThingKinds is no enumeration')

    def test_structs(self):
        self.expect('typedef struct { long version; void* info; } ThingContext;', None)
        self.expect('typedef struct { void* info; long version; } ThingContext;',
                    "has the fields ['version', 'info'], not ['info', 'version']")

    def test_methods(self):
        for line in ('- (void)moveTo:(NSPoint)place speed:(double)speed;', '- (void)setTitle:(NSString*)title;', '- (int)size;',
                     '+ (id)thingWith:(id)one;', '- (BOOL)isEqual:(id)other;'):
            self.assertIsNone(self.method(line), line)
        for line in ('- (void)moveTo:(NSPoint)place;', '- (void)moveTo:(NSPoint)place sped:(double)speed;', '- (id)thingWith:(id)one;',
                     '- (void)setSize:(int)size;', '+ (int)size;'):
            self.assertIn('method of Thing', self.method(line) or '', line)

    def test_classes(self):
        for name, superclass, fault in (('Thing', 'NSObject', None), ('Thign', 'NSObject', 'is no class'),
                                        ('Thing', 'NSView', "has the superclass ['NSObject']")):
            self.assertEqual(self.fault(declarations.Declaration('class', name, 'here', superclass=superclass)), fault)

    def test_whatIsDeclaredAndNotUsed(self):
        with tempfile.TemporaryDirectory() as folder:
            source = Path(folder) / 'A.mm'
            source.write_text('// kGone resize:\nMakeThing([thing moveTo:place speed:2]);\n[thing setTitle:kThing];\n#ifdef __APPLE__\n#else\n'
                              '[thing old];\n#endif\n- (void)told:(id)x {\n}\n')
            found = [one for line in ('int MakeThing(int a);', 'int MakeOther(int a);', 'extern const int kThing;', 'extern const int kGone;')
                     for one in parse(line)]
            for line, where in (('- (void)moveTo:(NSPoint)place speed:(double)speed;', 1), ('- (void)moveTo:(NSPoint)place size:(double)size;', 2),
                                ('@property (copy) NSString* title;', 3), ('- (void)old;', 4), ('- (void)told:(id)x;', 5)):
                found += declarations.member(line, 'Thing', f'System/os/log.h:{where}')
            for index, one in enumerate(found[:4]):
                one.where = f'System/os/log.h:{index + 10}'
            self.assertEqual([one.name for one in check_interfaces.unused(found, [source])],
                             ['MakeOther', 'kGone', 'moveTo:size:', 'old'])

    def test_methodsThatNobodyCalls(self):
        with tempfile.TemporaryDirectory() as folder:
            source = Path(folder) / 'A.mm'
            source.write_text('@interface A : Thing\n- (void)told:(id)x;\n@end\n@implementation A\n- (void)told:(id)x {\n}\n'
                              '- (void)pressed:(id)x {\n  [self helpMyself];\n}\n- (void)helpMyself {\n}\n- (void)windowWillClsoe:(id)x {\n}\n@end\nf(@selector(pressed:));\n')
            defined, named = check_interfaces.ownMethods([source])
            self.assertEqual([name for _, name in defined if name not in named], ['windowWillClsoe:'])


def image(cpu=0x0100000C, classes=('A',), undefined=(('_f', 1),), libraries=('/usr/lib/libSystem.B.dylib',), sign=True):
    """A small program: its commands, symbols and, for arm64, an ad-hoc signature."""
    names, symbols = b'\0', b''
    for name, kind, ordinal in [(f'_OBJC_CLASS_$_{name}', 0x0F, 0) for name in classes] + [(n, 0x01, o) for n, o in undefined]:
        symbols += struct.pack('<IBBHQ', len(names), kind, 0, ordinal << 8, 0)
        names += name.encode() + b'\0'
    loads = b''
    for library in libraries:
        text = library.encode() + b'\0' * (8 - len(library) % 8)
        loads += struct.pack('<6I', 0xC, 24 + len(text), 24, 0, 0, 0) + text
    count = len(libraries) + 1 + sign
    size = len(loads) + 24 + 16 * sign
    start = 32 + size
    end = start + len(symbols) + len(names)
    commands = loads + struct.pack('<6I', 0x2, 24, start, len(symbols) // 16, start + len(symbols), len(names))
    code = 44 + 32
    blob = 20 + code
    if sign:
        commands += struct.pack('<4I', 0x1D, 16, end, blob)
    data = struct.pack('<8I', 0xFEEDFACF, cpu, 0, 6, count, size, 0, 0) + commands + symbols + names
    if not sign:
        return data
    directory = struct.pack('>9I4BI', 0xFADE0C02, code, 0x20400, 2, 44, 0, 0, 1, end, 32, 2, 0, 12, 0)
    return data + struct.pack('>5I', 0xFADE0CC0, blob, 1, 0, 20) + directory + hashlib.sha256(data).digest()


class ChecksPrograms(unittest.TestCase):
    def faults(self, *slices, forbidden=()):
        with tempfile.TemporaryDirectory() as folder:
            paths = []
            for index, data in enumerate(slices):
                paths.append(Path(folder) / str(index))
                paths[-1].write_bytes(data)
            whole = Path(folder) / 'whole'
            mach_o.join(whole, paths)
            return list(mach_o.faults(whole, ['A'], ['/usr/lib/libSystem.B.dylib'], forbidden))

    def both(self, **changes):
        return self.faults(image(**changes), image(cpu=0x01000007))

    def test_aRightOneHasNoFault(self):
        self.assertEqual(self.both(), [])

    def test_oneArchitectureIsNotEnough(self):
        self.assertEqual(self.faults(image()), ["is for ['arm64'], not for both architectures"])

    def test_aMissingClass(self):
        self.assertEqual(self.both(classes=()), ['arm64: has no class A'])

    def test_aSymbolFromElsewhere(self):
        other = '/opt/lib/libother.dylib'
        self.assertEqual(self.both(libraries=(other,)), [f'arm64: takes _f from {other}', f'arm64: needs {other}'])
        self.assertEqual(self.both(undefined=(('_f', 254),)), ['arm64: takes _f from wherever it is found'])

    def test_theSignature(self):
        self.assertEqual(self.both(sign=False), ['arm64: is not signed'])
        changed = image().replace(b'_f\0', b'_g\0')
        self.assertEqual(self.faults(changed, image(cpu=0x01000007)), ['arm64: was changed after it was signed (page 0)'])

    def test_aTextThatMustNotBeThere(self):
        slices = image(undefined=(('CORVANE_ROOT', 1),)), image(cpu=0x01000007)
        self.assertEqual(self.faults(*slices, forbidden=['CORVANE_ROOT']), ['arm64: contains "CORVANE_ROOT"'])

    def test_whatIsNoProgram(self):
        with self.assertRaises(mach_o.Malformed):
            self.faults(b'\x7fELF' + bytes(60))


if __name__ == '__main__':
    unittest.main(verbosity=1)
