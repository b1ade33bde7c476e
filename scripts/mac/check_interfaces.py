"""Compares every declaration of Apple's interfaces with typings that a program made from the system's own headers, and the
methods of the pane's Objective-C classes with the declarations: check_interfaces.py TYPINGS SOURCES...

The typings write a selector as one name, all whole and floating-point numbers as `number`, and have no macros and no
functions that a header defines itself; what they cannot tell is counted at the end."""
import re
import sys
from collections import Counter
from pathlib import Path

import declarations

# What the compiler uses by itself, for texts and loops.
COMPILERS = {'NSConstantString', 'countByEnumeratingWithState:objects:count:'}
# What the Objective-C runtime calls by itself.
RUNTIME = {'dealloc', 'init', 'load', 'initialize', '.cxx_destruct'}


def joined(selector):
    """A selector as the typings write it."""
    parts = [part for part in selector.split(':') if part]
    return ''.join(part if index == 0 else part[0].upper() + part[1:] for index, part in enumerate(parts))


class Typings:
    def __init__(self, folder):
        self.functions, self.constants, self.enums = {}, set(), {}
        self.fields, self.parents, self.methods = {}, {}, {}
        for file in sorted(Path(folder).glob('*.d.ts')):
            self._read(file.read_text())

    def _read(self, text):
        for name, arguments in re.findall(r'^declare function (\w+)\((.*)\): .*;$', text, re.M):
            self.functions.setdefault(name, set()).add(declarations.countArguments(arguments))
        self.constants.update(re.findall(r'^declare const (\w+): (?!\{)', text, re.M))
        for name, body in re.findall(r'^declare const (\w+): \{\n(.*?)^\};', text, re.M | re.S):
            self.enums.setdefault(name, {}).update(
                {key: int(value) for key, value in re.findall(r'^  (\w+): (-?\d+),', body, re.M)})
        pattern = r'^declare (?:abstract )?(?:class|interface) (\w+)(?:<[^{]*?>)?([^{]*)\{\n(.*?)^\}'
        for name, heritage, body in re.findall(pattern, text, re.M | re.S):
            self.parents.setdefault(name, []).extend(
                word for word in re.findall(r'\w+', re.sub(r'<[^<>]*>', '', heritage)) if word not in ('extends', 'implements'))
            members = self.methods.setdefault(name, set())
            fields = self.fields.setdefault(name, [])
            for line in body.splitlines():
                self._member(line.strip(), members, fields)

    @staticmethod
    def _member(line, members, fields):
        line = re.sub(r'^((?:static )?\w+)<.*?>\(this: This(?:, )?', r'\1(', line)  # as class methods that make objects are
        match = re.match(r'(static )?(?:get |set )?(readonly )?(\w+)\$?\??(\(|:)(.*)$', line)
        if not match:
            return
        isStatic, readonly, name, opening, rest = bool(match[1]), match[2], match[3], match[4], match[5]
        if opening == ':' or line.removeprefix('static ').startswith(('get ', 'set ')):
            fields.append(name)
            capital = name[0].upper() + name[1:]
            members.update({(isStatic, name, 0), (isStatic, 'is' + capital, 0)})
            if not readonly:
                members.add((isStatic, 'set' + capital, 1))
            return
        depth, end = 1, 0
        while depth and end < len(rest):
            depth += (rest[end] == '(') - (rest[end] == ')')
            end += 1
        members.add((isStatic, name, declarations.countArguments(rest[:end - 1])))

    def lineage(self, name):
        """The class or protocol with everything that it inherits from."""
        waiting, seen = [name], []
        while waiting:
            one = waiting.pop()
            if one in self.methods and one not in seen:
                seen.append(one)
                waiting += self.parents[one]
        return seen

    def hasMethod(self, owner, method):
        wanted = (method.isStatic, joined(method.name), method.arguments)
        owners = [owner, owner + 'Protocol']  # the protocol NSObject
        return any(wanted in self.methods[one] for start in owners for one in self.lineage(start))


def enumeratorFault(one, typings):
    if not one.owner:
        return None if one.name in typings.constants else 'is no constant'
    if one.owner not in typings.enums:
        return f'{one.owner} is no enumeration'
    # The typings leave out what the names of an enumeration have in common: the beginning, of some an end.
    values = [value for key, value in typings.enums[one.owner].items() if re.search(f'{key}(Border|FontMask|)$', one.name)]
    if not values:
        return f'{one.owner} has no such member'
    return None if one.value is None or one.value in values else f'is {values}, not {one.value}'


def fault(one, typings):
    """What is wrong with a declaration; nothing when it is as in the typings."""
    if one.kind == 'function':
        counts = typings.functions.get(one.name)
        if counts is None:
            return 'is no function'
        return None if one.arguments in counts else f'takes {sorted(counts)} arguments, not {one.arguments}'
    if one.kind in ('constant', 'value'):
        return None if one.name in typings.constants else 'is no constant'
    if one.kind == 'enumerator':
        return enumeratorFault(one, typings)
    if one.kind == 'struct':
        fields = [name for name in typings.fields.get(one.owner or one.name, ()) if name != 'constructor']
        return None if fields == one.fields else f'has the fields {fields}, not {one.fields}'
    if one.kind == 'class':
        if one.name not in typings.methods:
            return 'is no class'
        return None if one.superclass in typings.parents[one.name] else f'has the superclass {typings.parents[one.name][:1]}'
    if one.kind == 'protocol':
        return None if one.name in typings.methods else 'is no protocol'
    if one.kind == 'method':
        return None if typings.hasMethod(one.owner, one) else f'is no {"class " if one.isStatic else ""}method of {one.owner}'
    return None  # types, macros and inline functions: not in the typings


def ownMethods(sources):
    """The methods that the pane's classes define, and all selectors that its sources name."""
    defined, named = [], set()
    for source in sources:
        text = re.sub(r'//[^\n]*', '', source.read_text())
        named.update(re.findall(r'@selector\(([\w:]+)\)', text))
        toItself = set(re.findall(r'\[self (\w+:?)', text))
        for interface in re.findall(r'@(?:interface|protocol) .*?@end', text, re.S):
            for method in re.findall(r'^[-+] ?\([^;{]*;', re.sub(r'\{[^{}]*\}', '', interface), re.M):
                named.add(declarations.selectorOf(' '.join(method.split())))
        for implementation in re.findall(r'@implementation .*?^@end', text, re.S | re.M):
            for method in re.findall(r'^[-+] ?\([^;{]*\{', implementation, re.M):
                selector = declarations.selectorOf(' '.join(method.split()))
                if re.match(r'\w+:?', selector)[0] not in toItself:
                    defined.append((source, selector))
    return defined, named


def isUsed(one, text):
    """Whether a text of sources for a Mac may use it."""
    if one.kind != 'method':
        return re.search(rf'\b{one.name}\b', text) is not None
    if ':' not in one.name:  # a message, a selector, or a method of one's own
        return re.search(rf'\b{one.name}(\]|\)| \{{|;)', text) is not None
    return re.search('[^;{]*?'.join(rf'\b{part}:' for part in one.name.split(':') if part), text) is not None


def unused(found, sources):
    """The declarations that nothing needs: neither the sources nor, of types and the like, other declarations."""
    text = '\n'.join(re.sub(r'//[^\n]*', '', source.read_text()) for source in sources)
    text = re.sub(r'^#else\n.*?^#endif|^#ifndef __APPLE__\n.*?^#endif', '', text, flags=re.M | re.S)  # GNUstep's
    lines = {}  # what one line declares is used together, as getter and setter are
    for one in found:
        lines.setdefault((one.where, one.name if one.kind == 'enumerator' else ''), []).append(one)
    for (where, _), ones in lines.items():
        others = declarations.allBut(where) if ones[0].kind != 'method' else ''
        members = [one for one in found if one.owner == ones[0].name and ones[0].kind in ('protocol', 'type')]
        if not any(one.name in COMPILERS or isUsed(one, text + others) for one in ones) and not any(isUsed(one, text) for one in members):
            yield ones[0]


def main(folder, *sources):
    typings = Typings(folder)
    found = [one for name in declarations.frameworks() for one in declarations.readFramework(name)] + declarations.readSystem()
    faults = [f'{one.where}: {one.name} {what}' for one in found if (what := fault(one, typings))]
    faults += [f'{one.where}: {one.name} is not used' for one in unused(found, [Path(source) for source in sources])]
    known = {one.name for one in found if one.kind == 'method'} | RUNTIME
    defined, named = ownMethods([Path(source) for source in sources])
    faults += [f'{source.name}: nobody calls {selector}: neither a framework as declared nor the pane'
               for source, selector in defined if selector not in known | named]
    for text in faults:
        print(text)
    for one in found:
        if one.deprecated:
            print(f'deprecated: {one.name}: {one.deprecated}')
    counts = Counter(one.kind for one in found)
    unchecked = ('type', 'macro', 'inline')
    print('compared: ' + ', '.join(f'{count} {kind}' for kind, count in counts.items() if kind not in unchecked) +
          '; not in the typings: ' + ', '.join(f'{counts[kind]} {kind}' for kind in unchecked))
    return 1 if faults or not typings.functions else 0


if __name__ == '__main__':
    sys.exit(main(*sys.argv[1:]))
