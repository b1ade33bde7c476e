"""Reads the declarations of Apple's interfaces in declarations/, which are written for this reader: a C declaration is one
line, every group of lines begins with the documentation page that describes it, and what has been deprecated says why
it is used all the same."""
import re
from dataclasses import dataclass, field
from pathlib import Path

FOLDER = Path(__file__).parent / 'declarations'


@dataclass
class Declaration:
    kind: str  # function, constant, value (a constant without a symbol), enumerator, struct, type, macro, inline, class, protocol, method
    name: str
    where: str
    arguments: int = 0
    owner: str = ''  # of a method or an enumerator
    value: int | None = None
    fields: list = field(default_factory=list)  # of a struct
    superclass: str = ''
    isStatic: bool = False
    deprecated: str = ''


class Malformed(Exception):
    pass


def splitTopLevel(text):
    """The pieces between the commas that stand in no bracket."""
    pieces, depth = [''], 0
    for character in text:
        depth += (character in '([{<') - (character in ')]}>')
        if character == ',' and depth == 0:
            pieces.append('')
        else:
            pieces[-1] += character
    return [piece.strip() for piece in pieces if piece.strip()]


def countArguments(text):
    text = text.replace('=>', '').strip()
    return 0 if text in ('', 'void') else len(splitTopLevel(text))


def selectorOf(line):
    """The selector of a method's declaration, without its types."""
    text = re.sub(r'^[-+]\s*', '', line)
    while True:  # types in round brackets, from the innermost
        shorter = re.sub(r'\([^()]*\)', '', text)
        if shorter == text:
            break
        text = shorter
    text = re.sub(r'(,\s*\.\.\.|NS_REQUIRES_NIL_TERMINATION|__attribute__.*)', '', text.rstrip(' ;{'))
    parts = re.findall(r'([A-Za-z_]\w*)?:', text)
    return ''.join(part + ':' for part in parts) if ':' in text else text.strip()


def enumerators(body, owner, where):
    for piece in splitTopLevel(body):
        match = re.fullmatch(r'(\w+) = (-?(?:0x[0-9A-Fa-f]+|\d+)|\w+)', piece)
        if not match:
            raise Malformed(f'{where}: an enumerator without its value: {piece}')
        value = int(match[2], 0) if re.match(r'-?\d', match[2]) else None
        yield Declaration('enumerator', match[1], where, owner=owner, value=value)


def cDeclaration(line, where):
    comment = re.search(r'//\s*(\w+)\s*$', line)
    line = re.sub(r'\s*//.*$', '', line)
    if match := re.fullmatch(r'typedef enum : \w+ \{(.*)\} (\w+);', line):
        yield Declaration('type', match[2], where)
        yield from enumerators(match[1], match[2], where)
    elif match := re.fullmatch(r'enum(?: : \w+)? \{(.*)\};', line):
        yield from enumerators(match[1], comment[1] if comment else '', where)
    elif match := re.fullmatch(r'typedef struct(?: \w+)? \{(.*)\} (\w+);', line):
        fields = [re.search(r'(\w+)$', re.sub(r'\(\*(\w+)\)\(.*|\[\d+\]$', r'\1', piece.strip()))[1]
                  for piece in match[1].split(';') if piece.strip()]
        yield Declaration('struct', match[2], where, fields=fields, owner=comment[1] if comment else '')
    elif match := re.fullmatch(r'typedef .*?\(?[*^]?(\w+)\)?(?:\(.*\))?;', line):
        yield Declaration('type', match[1], where)
    elif match := re.match(r'static inline [^(]*?(\w+)\(', line):
        yield Declaration('inline', match[1], where)
    elif match := re.fullmatch(r'static const \w+ (\w+) = -?\d+;', line):
        yield Declaration('value', match[1], where)
    elif match := re.fullmatch(r'extern [^(]*?(\w+);', line):
        yield Declaration('constant', match[1], where)
    elif match := re.fullmatch(r'[\w \*]*?(\w+)\((.*)\)(?: __attribute__\(\(.*\)\))?;', line):
        yield Declaration('function', match[1], where, arguments=countArguments(match[2]))
    else:
        raise Malformed(f'{where}: cannot be read: {line}')


def member(line, owner, where):
    if match := re.fullmatch(r'@property(?: \(([^)]*)\))? .*?(\w+);', line):
        attributes, name = match[1] or '', match[2]
        getter = re.search(r'getter=(\w+)', attributes)
        yield Declaration('method', getter[1] if getter else name, where, owner=owner, isStatic='class' in attributes)
        if 'readonly' not in attributes:
            yield Declaration('method', f'set{name[0].upper()}{name[1:]}:', where, 1, owner, isStatic='class' in attributes)
    elif re.match(r'[-+] ?\(', line):
        selector = selectorOf(line)
        yield Declaration('method', selector, where, selector.count(':'), owner, isStatic=line[0] == '+')
    else:
        raise Malformed(f'{where}: cannot be read: {line}')


def read(path):
    """All declarations of one header."""
    found, page, deprecated, owner, skipping, isForIntel = [], False, '', '', False, False
    for number, raw in enumerate(path.read_text().splitlines(), 1):
        line, where = raw.strip(), f'{path.relative_to(FOLDER)}:{number}'
        if skipping or line.startswith('#'):  # a macro may take several lines
            if match := re.match(r'#define (\w+)', line):
                found.append(Declaration('macro', match[1], where))
            skipping = line.endswith('\\')
            isForIntel = line == '#if defined(__x86_64__)' or (isForIntel and line not in ('#else', '#endif'))
            continue
        if isForIntel:  # the typings are those of the other processor
            continue
        if not line:
            page = page and bool(owner)
        elif line.startswith('// https://developer.apple.com/documentation/'):
            page = True
        elif match := re.match(r'// deprecated: (.*)', line):
            deprecated = match[1]
        elif line.startswith('//') or line in ('extern "C" {', '}', '@optional', '@required') or line.startswith('@class'):
            continue
        elif line == '@end':
            owner = ''
        else:
            if not page:
                raise Malformed(f'{where}: no documentation page is named above')
            if match := re.fullmatch(r'@interface (\w+) : (\w+)(?: <.*>)?', line):
                owner = match[1]
                new = [Declaration('class', owner, where, superclass=match[2])]
            elif match := re.fullmatch(r'@interface (\w+) \(\w*\)', line):
                owner, new = match[1], []
            elif match := re.fullmatch(r'@protocol (\w+)(?: <.*>)?', line):
                owner = match[1]
                new = [Declaration('protocol', owner, where)]
            else:
                new = list(member(line, owner, where) if owner else cDeclaration(line, where))
            for declaration in new:
                declaration.deprecated = deprecated
            deprecated = ''
            found += new
    return found


def allBut(where):
    """What all headers declare, without one line."""
    name, number = where.rsplit(':', 1)
    texts = []
    for header in FOLDER.rglob('*.h'):
        lines = header.read_text().splitlines()
        if str(header.relative_to(FOLDER)) == name:
            del lines[int(number) - 1]
        texts += [re.sub(r'//.*$', '', line) for line in lines if not line.startswith('@class')]
    return '\n'.join(texts)


def frameworks():
    return sorted(path.stem for path in FOLDER.glob('*.framework'))


def readFramework(name):
    return [one for header in sorted((FOLDER / f'{name}.framework').rglob('*.h')) for one in read(header)]


def readSystem():
    return [one for header in sorted((FOLDER / 'System').rglob('*.h')) for one in read(header)]
