"""The two sets of mutations: a sample of small changes, and the mistakes of mistakes.toml."""

import hashlib
import re
import sys
import tomllib
from dataclasses import dataclass
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
MISTAKES = ROOT / 'tools' / 'mistakes.toml'

ROOMS = ['system', 'look', 'controls', 'windowing', 'content', 'progress', 'quizrun', 'shell']
# What these paint is checked by the tests of the look, not by tests of logic.
PAINTING = ['banner', 'imagelabel', 'keylabel', 'log', 'metrics', 'painting', 'palette', 'polish',
            'questionlabel', 'rowbutton', 'statusicon', 'style', 'textlabel', 'typesetting']
# A change in a header rebuilds half the program, so only the one that is all data is included.
HEADERS = ['content/catalogue.h']


@dataclass
class Mutation:
    file: str
    line: int
    operator: str
    was: str
    now: str
    source: str
    # Tests that notice it and are left out otherwise.
    tests: tuple = ()

    def __str__(self):
        return f'{self.file}:{self.line} {self.operator}: {self.was} => {self.now or "(nothing)"}'


class Mistake(Mutation):
    def __str__(self):
        return f'{self.file}:{self.line} {self.operator}'


class Source:
    """A file's text, and the same text with blanks for all that is not code."""

    TOKEN = re.compile(r'//[^\n]*|/\*.*?\*/|^ *#(?:[^\n]*\\\n)*[^\n]*'
                       r'|"(?:[^"\\\n]|\\.)*"|\'(?:[^\'\\\n]|\\.)\'', re.M | re.S)

    def __init__(self, file):
        self.file = file
        self.text = (ROOT / file).read_text()
        self.strings = []
        pieces, end = [], 0
        for found in self.TOKEN.finditer(self.text):
            pieces.append(self.text[end:found.start()])
            if found[0][0] == '"':
                self.strings.append(found.span())
                pieces.append('"' + '_' * (len(found[0]) - 2) + '"')
            else:
                pieces.append(re.sub(r'[^\n]', ' ', found[0]))
            end = found.end()
        self.code = ''.join(pieces) + self.text[end:]

    def mutation(self, operator, start, end, replacement):
        """The text from start to end is replaced."""
        first = self.text.rfind('\n', 0, start) + 1
        last = self.text.find('\n', end)
        lines = self.text[first:last], self.text[first:start] + replacement + self.text[end:last]
        was, now = (' '.join(text.split()) for text in lines)
        return Mutation(self.file, self.text.count('\n', 0, start) + 1, operator, was, now,
                        self.text[:start] + replacement + self.text[end:])

    def statements(self):
        """Start, end and block of every statement without a block of its own."""
        start, parens, blocks, count = 0, 0, [0], 0
        for at, sign in enumerate(self.code):
            if sign in '([':
                parens += 1
            elif sign in ')]':
                parens -= 1
            elif parens > 0:
                continue
            elif sign == '{':
                count += 1
                blocks.append(count)
                start = at + 1
            elif sign == '}':
                blocks.pop()
                start = at + 1
            elif sign == ';':
                begin = start + len(self.code[start:at]) - len(self.code[start:at].lstrip())
                yield begin, at + 1, blocks[-1]
                start = at + 1


# The operators: each yields start, end and replacement.

def both_ways(*pairs):
    def operator(source):
        for sign, other in [*pairs, *((other, sign) for sign, other in pairs)]:
            for found in re.finditer(re.escape(sign), source.code):
                yield *found.span(), other
    return operator


def arithmetic(source):
    for start, end, other in both_ways((' + ', ' - '), (' += ', ' -= '), (' * ', ' / '),
                                       ('++', '--'))(source):
        # Texts can only be added.
        if not re.search(r'"_s$', source.code[:start]) and source.code[end:end + 2] != 'u"':
            yield start, end, other


def next_number(source):
    for found in re.finditer(r'(?<![\w.])\d+(?![\w.])', source.code):
        yield *found.span(), str(int(found[0]) + 1)


def conditions(source):
    """The head of each if and while, where its condition starts and ends, behind the declaration if
    it has one, and whether the condition is itself a declaration."""
    for found in re.finditer(r'\b(?:if|while) \(', source.code):
        start = end = found.end()
        depth = 1
        while depth:
            depth += {'(': 1, ')': -1}.get(source.code[end], 0)
            end += 1
        condition = source.code[start:end - 1]
        if ';' in condition:
            start += condition.rfind(';') + 2
        yield found, start, end - 1, re.search(r'\w [*&]?\w+ = ', source.code[start:end - 1])


def negation(source):
    for found in re.finditer(r'!(?=[\w(])', source.code):
        yield *found.span(), ''
    for _, start, end, is_declaration in conditions(source):
        if not is_declaration and source.code[start] != '!':
            yield start, end, f'!({source.text[start:end]})'


def skipped_body(source):
    for found, start, end, is_declaration in conditions(source):
        only_leaves = re.match(r'\) \{\s*(return|continue)\b', source.code[end:])
        if found[0].startswith('if') and not only_leaves:
            yield (end, end, '; false') if is_declaration else (
                start, end, f'false && ({source.text[start:end]})')


CALL = re.compile(r'(?!return\b|throw\b)[\w:.*]+(->[\w:.]+|<\w*>|\([^()]*\)|\[\w+\])*\(.*\);$', re.S)
ASSIGNMENT = re.compile(r'(?!using\b|return\b)[\w.\[\]()]+(->\w+)* [+-]?= .*;$', re.S)


def removed_call(source):
    for start, end, block in source.statements():
        statement = source.code[start:end]
        if block and CALL.match(statement) and not ASSIGNMENT.match(statement):
            yield start, end, ''


def early_exit(source):
    for start, end, _ in source.statements():
        leaves = re.match(r'(return|continue)\b', source.code[start:end])
        if leaves and re.search(r'\b(if|while|for) \(.*\) \{\s*$', source.code[:start]):
            yield start, end, ''


def swapped_statements(source):
    before = None
    for start, end, block in source.statements():
        statement = source.code[start:end]
        if not (block and (CALL.match(statement) or ASSIGNMENT.match(statement))):
            before = None
            continue
        if before and before[2] == block and not source.code[before[1]:start].strip():
            first, gap = source.text[before[0]:before[1]], source.text[before[1]:start]
            yield before[0], end, source.text[start:end] + gap + first
        before = start, end, block


def other_text(source):
    texts = [source.text[start:end] for start, end in source.strings]
    for index, (start, end) in enumerate(source.strings):
        others = texts[index + 1:] + texts[:index]
        other = next((text for text in others if text not in (texts[index], '""')), None)
        if other:
            yield start, end, other


def no_text(source):
    for start, end in source.strings:
        if end - start > 2:
            yield start, end, '""'


OPERATORS = {
    'comparison': both_ways((' == ', ' != '), (' < ', ' <= '), (' > ', ' >= ')),
    'logic': both_ways((' && ', ' || ')),
    'negation': negation,
    'arithmetic': arithmetic,
    'number': next_number,
    'truth': lambda source: (
        (*found.span(), 'false' if found[0] == 'true' else 'true')
        for found in re.finditer(r'\b(true|false)\b', source.code)),
    'call removed': removed_call,
    'statements swapped': swapped_statements,
    'other text': other_text,
    'no text': no_text,
    'if skipped': skipped_body,
    'exit removed': early_exit,
}


def files():
    for room in ROOMS:
        for path in sorted((ROOT / room).glob('*.cpp')):
            if path.stem not in PAINTING:
                yield f'{room}/{path.name}'
    yield from HEADERS


def sample(size, seed):
    """Evenly over the pairs of file and operator, and such that an edited file changes the choice
    within that file only."""
    def lot(*parts):
        return hashlib.sha256('\0'.join((seed, *parts)).encode()).digest()

    rounds = []
    for file in files():
        source = Source(file)
        for name, operator in OPERATORS.items():
            candidates = [source.mutation(name, *span) for span in operator(source)]
            candidates.sort(key=lambda one: lot(file, name, one.was, one.now))
            rounds += [(number, lot(file, name), one) for number, one in enumerate(candidates)]
    rounds.sort(key=lambda entry: entry[:2])
    chosen = [one for _, _, one in rounds[:size]]
    chosen.sort(key=lambda one: (one.file, one.line))
    return list(enumerate(chosen, 1)), len(rounds)


def written():
    """The mistakes of the hand-written set. Each table is a group of them."""
    chosen = []
    for group, mistakes in tomllib.loads(MISTAKES.read_text()).items():
        for mistake in mistakes:
            source = Source(mistake['file'])
            was, now = mistake['was'], mistake['now']
            if (count := source.text.count(was)) != 1 or was == now:
                sys.exit(f'{MISTAKES.name}, {group}: {mistake["file"]} has {count} times\n{was}\n'
                         'The text has to be there once, and to be replaced by another.')
            start = source.text.index(was)
            mutation = source.mutation(f'{group}: {mistake["what"]}', start, start + len(was), now)
            mutation.tests = tuple(mistake.get('tests', '').split())
            chosen.append(Mistake(**vars(mutation)))
    return list(enumerate(chosen, 1))
