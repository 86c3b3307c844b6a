#!/usr/bin/env python3
"""Makes the pages of docs/reference from src/com/kwoutil.idl and src/com/reference.txt.

    make_reference.py           writes the pages
    make_reference.py --check   fails if they are not what it would write

A member without a text fails, and so does a text without a member.
"""
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
PAGES = ROOT / 'docs' / 'reference'
BASIC = {'long': 'Long', 'short': 'Integer', 'float': 'Single', 'DATE': 'Date', 'BSTR': 'String', 'VARIANT': 'Variant',
         'VARIANT_BOOL': 'Boolean', 'IDispatch*': 'Object', 'IFontDisp*': 'Font', 'IPictureDisp*': 'Picture'}
KEYS = ('returns', 'errors', 'example', 'since', 'page')


def fail(text):
    sys.exit(f'make_reference.py: {text}')


class Argument:
    def __init__(self, text):
        attributes, self.type, self.name = re.fullmatch(r'\[([^\]]*)\]\s*(.+?)\s*(\w+)', text).groups()
        self.attributes = [one.strip() for one in attributes.split(',')]
        self.is_result = 'retval' in self.attributes
        self.by_reference = 'out' in self.attributes
        self.optional = 'optional' in self.attributes
        default = re.search(r'defaultvalue\((.*?)\)', attributes)
        self.default = default[1] if default else None

    def basic(self):
        name = self.type.replace(' ', '')
        if self.by_reference:
            name = name.removesuffix('*')
        if name in BASIC:
            return BASIC[name]
        # A pointer to one of the interfaces, or an enumeration.
        return name.removesuffix('*').removeprefix('_')

    def declared(self):
        text = f"{'' if self.by_reference else 'ByVal '}{self.name} As {self.basic()}"
        return f"[{text}{f' = {self.default}' if self.default else ''}]" if self.optional else text


class Member:
    """A method, an event, or a property with all its accessors."""

    def __init__(self, name, number, arguments, kind):
        self.name, self.number, self.kinds = name, number, [kind]
        self.result = next((one.basic() for one in arguments if one.is_result), None)
        self.arguments = [one for one in arguments if not one.is_result]
        if kind in ('let', 'set'):
            self.result = self.arguments.pop().basic()

    @property
    def is_property(self):
        return self.kinds[0] in ('get', 'let', 'set')

    def signature(self):
        arguments = ', '.join(one.declared() for one in self.arguments)
        brackets = f'({arguments})' if arguments or not self.is_property else ''
        return f"{self.name}{brackets}{f' As {self.result}' if self.result else ''}"

    def kind(self):
        if not self.is_property:
            return {'method': 'Method', 'event': 'Event'}[self.kinds[0]]
        return f'Property ({", ".join(self.kinds)})'


class Type:
    def __init__(self, name, kind, members):
        self.name, self.kind, self.members = name, kind, members


def preprocessed():
    return subprocess.run(['cpp', '-P', '-undef', '-nostdinc', '-I', str(ROOT / 'src'),
                           str(ROOT / 'src/com/kwoutil.idl')], check=True, capture_output=True, text=True).stdout


def arguments_of(text):
    return [Argument(one.strip()) for one in re.findall(r'\[[^\]]*\][^,\[]*', text)]


def members_of(body, event):
    members = {}
    for match in re.finditer(r'\[\s*id\((.*?)\)(?=\s*[,\]])(.*?)\]\s*(?:HRESULT|void)\s+(\w+)\((.*?)\)\s*;', body, re.S):
        number, attributes, name, arguments = match.groups()
        # The numbers of the metrics are sums.
        if not re.fullmatch(r'[0-9a-fx+*() -]+', number, re.I):
            fail(f'{name}: what is the identifier {number}?')
        attributes = re.sub(r'"[^"]*"', '', attributes)
        kind = 'event' if event else 'method'
        for word, accessor in (('propget', 'get'), ('propputref', 'set'), ('propput', 'let')):
            if re.search(rf'\b{word}\b', attributes):
                kind = accessor
                break
        found = Member(name, eval(number), arguments_of(arguments), kind)
        if name in members:
            members[name].kinds.append(kind)
        else:
            members[name] = found
    count = sum(len(one.kinds) for one in members.values())
    declared = len(re.findall(r'\b(?:HRESULT|void)\s+\w+\s*\(', body))
    if count != declared:
        fail(f'{count} of {declared} members were understood in: {body.strip()[:60]}')
    return list(members.values())


def types():
    text = preprocessed()
    found = []
    for name, body in re.findall(r'typedef enum (\w+) \{(.*?)\}', text, re.S):
        values = [(one[0], int(one[1])) for one in re.findall(r'(\w+)\s*=\s*(-?\d+)', body)]
        found.append(Type(name, 'enumeration', values))
    for name, body in re.findall(r'\binterface (\w+) : IDispatch\s*\{(.*?)\n?\s*\}', text, re.S):
        found.append(Type(name.removeprefix('_'), 'class', members_of(body, False)))
    for name, body in re.findall(r'\bdispinterface (\w+)\s*\{(.*?)\}', text, re.S):
        found.append(Type(name, 'events', members_of(body, True)))
    classes = set(re.findall(r'\bcoclass (\w+)', text))
    if classes != {one.name for one in found if one.kind == 'class'}:
        fail('not every class was found in the IDL file')
    return found


def texts():
    found, entry = {}, None
    for number, line in enumerate((ROOT / 'src/com/reference.txt').read_text(encoding='utf-8').splitlines(), 1):
        if line.startswith('#') or not line.strip():
            continue
        if not line.startswith(' '):
            if line in found:
                fail(f'reference.txt, line {number}: {line} stands there twice')
            entry = found[line] = {'': []}
            continue
        match = re.match(r'    (\w+): (.*)', line)
        if match and match[1] not in entry:
            entry[match[1]] = match[2]
        elif match:
            fail(f'reference.txt, line {number}: {match[1]} stands there twice')
        else:
            entry[''].append(line.strip())
    return found


class Texts:
    def __init__(self):
        self.entries, self.used = texts(), set()

    def text(self, name):
        entry = self.entries.get(name)
        if entry is None or not entry['']:
            fail(f'{name} has no text in src/com/reference.txt')
        self.used.add((name, ''))
        return ' '.join(entry[''])

    def part(self, type_name, member, key):
        for name in (f'{type_name}.{member}', type_name):
            if key in self.entries.get(name, {}):
                self.used.add((name, key))
                return self.entries[name][key].replace('{member}', member)
        fail(f'{type_name}.{member} has no "{key}" in src/com/reference.txt')

    def check_all_used(self):
        for name, entry in self.entries.items():
            for key in entry:
                if (name, key) not in self.used:
                    fail(f'src/com/reference.txt: {name}: "{key or "its text"}" belongs to nothing in the IDL file')


def escaped(text):
    return re.sub(r'([|<*_])', r'\\\1', text)


def member_section(of, member, say):
    name = f'{of.name}.{member.name}'
    lines = [f'## {member.name}', '', escaped(say.text(name)), '', '```', member.signature(), '```', '']
    if member.arguments:
        lines += ['| argument | type | passed | meaning |', '|---|---|---|---|']
        for one in member.arguments:
            passed = ('by reference' if one.by_reference else 'by value') + (', optional' if one.optional else '')
            meaning = escaped(say.part(of.name, member.name, one.name))
            lines.append(f'| `{one.name}` | {one.basic()} | {passed} | {meaning} |')
        lines.append('')
    facts = [f'{member.kind()}, identifier &H{member.number:08X}. Since {say.part(of.name, member.name, "since")}.']
    if member.result and not member.is_property:
        facts.append(f'**Returns** ({member.result}): {escaped(say.part(of.name, member.name, "returns"))}')
    facts.append(f'**Errors:** {escaped(say.part(of.name, member.name, "errors"))}')
    example = say.part(of.name, member.name, 'example')
    ticks = '``' if '`' in example else '`'
    facts.append(f'**Example:** {ticks}{example}{ticks}')
    return lines + '\n\n'.join(facts).split('\n') + ['']


def page_name(of):
    words = re.sub(r'^_*(I?KWO)', lambda match: ('i-' if match[1][0] == 'I' else '') + 'kwo-', of.name)
    words = re.sub(r'(?<=[a-z])(?=[A-Z])', '-', words).lower()
    return words + ('-events' if of.kind == 'events' else '') + '.md'


def pictures(of, say):
    """The same picture at two densities, if the class has one: "picture: month-view, what it shows"."""
    if 'picture' not in say.entries.get(of.name, {}):
        return []
    name, shows = say.part(of.name, '', 'picture').split(', ', 1)
    files = {96: f'{name}.png', 144: f'{name}-144.png'}
    for file in files.values():
        if not (ROOT / 'docs' / file).is_file():
            fail(f'docs/{file}, the picture of {of.name}, is not there: tools/make_pictures.sh makes it')
    return ['| ' + ' | '.join(f'{density} dots per inch' for density in files) + ' |', '|---|---|',
            '| ' + ' | '.join(f'![{shows}](../{file})' for file in files.values()) + ' |', '']


def page(of, say):
    title = {'class': of.name, 'events': f'{of.name.lstrip("_")} events', 'enumeration': of.name}[of.kind]
    explained = say.part(of.name, '', 'page')
    lines = ['<!-- Made by tools/make_reference.py: change src/com/kwoutil.idl and src/com/reference.txt instead. -->', '',
             f'# {title}', '', escaped(say.text(of.name)), '']
    if of.kind == 'class':
        lines += [f'Create it as `KWOUtil.{of.name}`. [{explained}](../{explained}) explains how to use it.', '']
        lines += pictures(of, say)
    else:
        lines += [f'[{explained}](../{explained}) explains how to use it.', '']
    if of.kind == 'enumeration':
        lines += ['| constant | value | meaning |', '|---|---|---|']
        lines += [f'| `{name}` | {value} | {escaped(say.text(f"{of.name}.{name}"))} |' for name, value in of.members]
        return lines + ['', f'Since {say.part(of.name, "", "since")}.']
    lines += ['| member | what it does |', '|---|---|']
    for one in of.members:
        first = re.match(r'.*?[.](?= |$)', say.text(f'{of.name}.{one.name}'))
        lines.append(f'| [{one.name}](#{one.name.lower()}) | {escaped(first[0] if first else "")} |')
    lines.append('')
    for one in of.members:
        lines += member_section(of, one, say)
    return lines


def index(found, say):
    lines = ['<!-- Made by tools/make_reference.py: change src/com/kwoutil.idl and src/com/reference.txt instead. -->', '',
             '# Reference', '', 'Every class, event and enumeration of the type library, with every member.', '',
             'Types have the names of classic BASIC: an Integer has 16 bits, a Long 32. Arguments in brackets may be left',
             'out. An argument without `ByVal` is passed by reference: a compiled program passes a variable of exactly',
             'that type; a script may pass any value that converts to it.', '',
             'The words after "Property" say how it is used: *get* is reading, *let* assigning a value, and *set* assigning',
             'an object (`Set` in Basic). The identifier is the dispatch identifier, with which a late-bound caller calls',
             'the member (`IDispatch::Invoke`).', '']
    for kind, heading in (('class', 'Classes'), ('events', 'Events'), ('enumeration', 'Enumerations')):
        lines += [f'## {heading}', '', '| name | what it is |', '|---|---|']
        for one in sorted((one for one in found if one.kind == kind), key=lambda one: one.name):
            lines.append(f'| [{one.name}]({page_name(one)}) | {escaped(say.text(one.name))} |')
        lines.append('')
    return lines


def main():
    say, found = Texts(), types()
    pages = {'index.md': index(found, say)}
    pages |= {page_name(one): page(one, say) for one in found}
    say.check_all_used()
    pages = {name: '\n'.join(lines).rstrip('\n') + '\n' for name, lines in pages.items()}
    if sys.argv[1:] == ['--check']:
        there = {path.name: path.read_text(encoding='utf-8') for path in PAGES.glob('*')}
        different = sorted(name for name in there.keys() | pages.keys() if there.get(name) != pages.get(name))
        if different:
            fail(f'docs/reference is not what the sources say ({", ".join(different)}): run tools/make_reference.py')
        return
    if sys.argv[1:]:
        fail('usage: make_reference.py [--check]')
    PAGES.mkdir(parents=True, exist_ok=True)
    for path in PAGES.glob('*.md'):
        path.unlink()
    for name, text in pages.items():
        (PAGES / name).write_text(text, encoding='utf-8')


main()
