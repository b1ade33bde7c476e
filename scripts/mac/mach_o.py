"""Reads, checks and joins the programs and libraries of macOS (the Mach-O format): mach_o.py join OUTPUT SLICE..."""
import hashlib
import struct
import sys
from pathlib import Path

FAT_MAGIC, MAGIC_64 = 0xCAFEBABE, 0xFEEDFACF
CPUS = {0x01000007: 'x86_64', 0x0100000C: 'arm64'}
LC_SYMTAB, LC_LOAD_DYLIB, LC_CODE_SIGNATURE, LC_LOAD_WEAK_DYLIB, LC_REEXPORT_DYLIB = 0x2, 0xC, 0x1D, 0x80000018, 0x8000001F
SIGNATURE_MAGIC, CODE_DIRECTORY_MAGIC, AD_HOC, SHA_256 = 0xFADE0CC0, 0xFADE0C02, 0x2, 2
UNDEFINED_KIND, KIND_MASK, DEBUGGING_MASK = 0x0, 0x0E, 0xE0
PAGE_SHIFT = 14  # slices begin at the larger of the two page sizes


class Malformed(Exception):
    pass


class Image:
    """One architecture of a file."""

    def __init__(self, data):
        magic, cpu, self.subtype, self.type, commands, _, _, _ = struct.unpack_from('<8I', data)
        if magic != MAGIC_64 or cpu not in CPUS:
            raise Malformed('is no 64-bit program for a Mac')
        self.data, self.cpu, self.architecture = data, cpu, CPUS[cpu]
        self.libraries, self.symbols, self.signature = [], [], None
        at = 32
        for _ in range(commands):
            command, size = struct.unpack_from('<2I', data, at)
            if command in (LC_LOAD_DYLIB, LC_LOAD_WEAK_DYLIB, LC_REEXPORT_DYLIB):
                name = at + struct.unpack_from('<I', data, at + 8)[0]
                self.libraries.append(data[name:at + size].split(b'\0')[0].decode())
            elif command == LC_SYMTAB:
                self._readSymbols(*struct.unpack_from('<4I', data, at + 8))
            elif command == LC_CODE_SIGNATURE:
                offset, length = struct.unpack_from('<2I', data, at + 8)
                self.signature = (offset, data[offset:offset + length])
            at += size

    def _readSymbols(self, offset, count, strings, _):
        for index in range(count):
            name, kind, _, description, _ = struct.unpack_from('<IBBHQ', self.data, offset + 16 * index)
            if kind & DEBUGGING_MASK:
                continue
            text = self.data[strings + name:self.data.index(b'\0', strings + name)].decode()
            self.symbols.append((text, kind & KIND_MASK == UNDEFINED_KIND, description >> 8))

    def classes(self):
        prefix = '_OBJC_CLASS_$_'
        return {name.removeprefix(prefix) for name, undefined, _ in self.symbols if name.startswith(prefix) and not undefined}

    def undefined(self):
        """The undefined symbols with the library of each; none where it is to be looked for at run time."""
        for name, undefined, ordinal in self.symbols:
            if undefined:
                yield name, self.libraries[ordinal - 1] if 0 < ordinal <= len(self.libraries) else None

    def signatureFault(self):
        """Why the ad-hoc signature does not hold; nothing when it does."""
        if self.signature is None:
            return 'is not signed'
        start, blob = self.signature
        magic, _, count = struct.unpack_from('>3I', blob)
        if magic != SIGNATURE_MAGIC:
            return 'has no signature where it should'
        for index in range(count):
            offset = struct.unpack_from('>2I', blob, 12 + 8 * index)[1]
            if struct.unpack_from('>I', blob, offset)[0] == CODE_DIRECTORY_MAGIC:
                return self._directoryFault(blob[offset:], start)
        return 'has a signature without a code directory'

    def _directoryFault(self, directory, start):
        flags, hashes = struct.unpack_from('>2I', directory, 12)
        slots, limit = struct.unpack_from('>2I', directory, 28)
        size, kind, _, shift = struct.unpack_from('>4B', directory, 36)
        if not flags & AD_HOC or kind != SHA_256 or limit != start:
            return f'has another signature than an ad-hoc one over all of it (flags {flags:#x})'
        page = 1 << shift
        for slot in range(slots):
            stored = directory[hashes + slot * size:hashes + (slot + 1) * size]
            if hashlib.sha256(self.data[slot * page:min((slot + 1) * page, limit)]).digest() != stored:
                return f'was changed after it was signed (page {slot})'
        return None


def read(path):
    data = Path(path).read_bytes()
    if struct.unpack_from('>I', data)[0] != FAT_MAGIC:
        return [Image(data)]
    count = struct.unpack_from('>I', data, 4)[0]
    places = [struct.unpack_from('>5I', data, 8 + 20 * index) for index in range(count)]
    return [Image(data[offset:offset + size]) for _, _, offset, size, _ in places]


def join(output, slices):
    images = [Image(Path(path).read_bytes()) for path in slices]
    header, body = struct.pack('>2I', FAT_MAGIC, len(images)), b''
    start = 1 << PAGE_SHIFT
    for image in images:
        body += b'\0' * (-len(body) % (1 << PAGE_SHIFT))
        header += struct.pack('>5I', image.cpu, image.subtype, start + len(body), len(image.data), PAGE_SHIFT)
        body += image.data
    Path(output).write_bytes(header.ljust(start, b'\0') + body)
    Path(output).chmod(0o755)


def faults(path, classes, libraries, forbidden):
    images = read(path)
    have = sorted(image.architecture for image in images)
    if have != ['arm64', 'x86_64']:
        yield f'is for {have}, not for both architectures'
    for image in images:
        for name in sorted(set(classes) - image.classes()):
            yield f'{image.architecture}: has no class {name}'
        for name, library in image.undefined():
            if library not in libraries:
                yield f'{image.architecture}: takes {name} from {library or "wherever it is found"}'
        for library in image.libraries:
            if library not in libraries:
                yield f'{image.architecture}: needs {library}'
        for text in forbidden:
            if text.encode() in image.data:
                yield f'{image.architecture}: contains "{text}"'
        if image.architecture == 'arm64' and (fault := image.signatureFault()):
            yield f'{image.architecture}: {fault}'


def installName(framework):
    """The path by which a program names a framework of the system."""
    version = {'AppKit': 'C', 'Foundation': 'C'}.get(framework, 'A')
    return f'/System/Library/Frameworks/{framework}.framework/Versions/{version}/{framework}'


def main(command, output, *slices):
    if command != 'join':
        sys.exit(__doc__)
    join(output, slices)


if __name__ == '__main__':
    main(*sys.argv[1:])
