"""Makes the faults of scripts/mutate: every way to change one line of a C++ file (two for swapped rows).

It reads text, not syntax, and relies on clang-format's blanks around operators. A change that does not
compile costs nothing but the try.
"""

import random
import re
from dataclasses import dataclass

OPPOSITES = {
    "==": "!=", "!=": "==", "<": "<=", "<=": "<", ">": ">=", ">=": ">",
    "&&": "||", "||": "&&",
    "+": "-", "-": "+", "*": "/", "/": "*", "%": "/", "+=": "-=", "-=": "+=",
    "&": "|", "|": "&", "<<": ">>", ">>": "<<",
}
OPERATOR = re.compile(
    r"(?<= )(?:" + "|".join(map(re.escape, sorted(OPPOSITES, key=len, reverse=True))) + r")(?= )")
CONDITION = re.compile(r"\b(?:if|while) (?:constexpr )?\(")
NUMBER = re.compile(r"(?<![\w.'])(?:0x[0-9a-fA-F]+|\d+)(?![\w.'])")
LETTER_CASE = re.compile(r"[A-Za-z]")
# A statement that stands alone on its line: a call, an assignment to something that exists, a jump.
STATEMENT = re.compile(r"(?:(?:\+\+|--)[\w.\->]+|[\w:.\->\[\]]+\(.*\)|"
                       r"[\w.\->\[\]*]+ [-+*/|&]?= .*|continue|break);$")
NO_STATEMENT = re.compile(r"(?:return|case|delete|throw|if|for|while|else|static_assert|EXPECT)\b")
# Lines whose change nobody could see: what helps the compiler, reserves room, traces or waits.
LEFT_OUT = re.compile(r"^\s*(?:#|using |namespace |static_assert|template|friend )|"
                      r"\b(?:reserve|DebugLine|OutputDebugStringW|Sleep)\(")


@dataclass(frozen=True)
class Fault:
    path: str  # from the root of the tree
    kind: str
    lines: tuple  # of (number from 0, text it becomes)

    def text(self, source):
        changed = source.split("\n")
        for number, line in self.lines:
            changed[number] = line
        return "\n".join(changed)

    def diff(self, source):
        before = source.split("\n")
        rows = []
        for number, line in self.lines:
            rows += ["    - " + before[number].strip(), "    + " + line.strip()]
        return "\n".join(rows)

    def place(self):
        return f"{self.path}:{self.lines[0][0] + 1}"


def literals_apart(source):
    """The text with comments and the insides of literals blanked, and the strings and characters by line."""
    blank = list(source)
    found = []
    pattern = re.compile(r'//[^\n]*|/\*.*?\*/|R"(\w*)\(.*?\)\1"|"(?:\\.|[^"\\\n])*"|'
                         r"(?<![0-9a-fA-F])'(?:\\.|[^'\\\n])+'", re.S)
    for match in pattern.finditer(source):
        comment = match.group()[0] == "/"
        inside = range(match.start(), match.end()) if comment else range(match.start() + 1, match.end() - 1)
        for i in inside:
            if blank[i] != "\n":
                blank[i] = " " if comment else "\x01"
        if not comment and not match.group().startswith("R"):
            number = source.count("\n", 0, match.start())
            start = match.start() - (source.rfind("\n", 0, match.start()) + 1)
            found.append((number, start, match.group()))
    return "".join(blank).split("\n"), found


def closing(line, opening):
    depth = 0
    for i in range(opening, len(line)):
        depth += {"(": 1, ")": -1}.get(line[i], 0)
        if depth == 0:
            return i
    return -1


def first_field(row):
    """Where the first field of a table row `{a, b},` or a case `case a: b` ends; 0 where it is neither."""
    stripped = row.lstrip()
    begin = len(row) - len(stripped)
    if stripped.startswith("case "):
        end = re.search(r"(?<!:):(?!:)", row)
        return (begin, end.start()) if end and row.rstrip().endswith(";") else None
    if not stripped.startswith("{") or not re.search(r"\},?\s*$", row):
        return None
    depth = 0
    for i in range(begin, len(row)):
        depth += (row[i] in "{(") - (row[i] in "})")
        if row[i] == "," and depth == 1:
            return begin, i
    return None


def of_line(line, code, previous_code, draw):
    """(kind, text) for every change of one line, literals apart."""
    made = []
    def put(kind, begin, end, text):
        made.append((kind, line[:begin] + text + line[end:]))
    for match in OPERATOR.finditer(code):
        put("operator", match.start(), match.end(), OPPOSITES[match.group()])
    for match in re.finditer(r"\+\+|--", code):
        put("operator", match.start(), match.end(), "--" if match.group() == "++" else "++")
    for match in re.finditer(r"(?<![\w)])!(?=[\w(:])", code):
        put("condition", match.start(), match.end(), "")
    for match in CONDITION.finditer(code):
        end = closing(code, match.end() - 1)
        if end > 0:
            put("condition", match.end(), end, "!(" + line[match.end():end] + ")")
    for match in NUMBER.finditer(code):
        value = int(match.group(), 0)
        changed = value + 1 if value == 0 or draw.random() < 0.5 else value - 1
        put("constant", match.start(), match.end(), hex(changed) if "x" in match.group() else str(changed))
    for match in re.finditer(r"\b(?:true|false)\b", code):
        put("constant", match.start(), match.end(), "false" if match.group() == "true" else "true")
    stripped = code.strip()
    starts = re.search(r"[;{}:]\s*$|\)\s*$|^\s*$|\belse$", previous_code)
    if starts and STATEMENT.match(stripped) and not NO_STATEMENT.match(stripped):
        put("dropped", len(line) - len(line.lstrip()), len(line), ";")
    if match := re.match(r"\s*(?:else )?if \(", code):
        end = closing(code, match.end() - 1)
        if end > 0 and code.rstrip().endswith(";"):
            put("dropped", end + 1, len(line), " {}")
    return made


def of_literal(line, start, literal, draw):
    if literal.startswith("'"):
        if literal[1] == "\\" or not literal[1].isascii():
            return None
        neighbour = chr(ord(literal[1]) ^ 1)
        changed = "'0'" if neighbour in "'\\" else f"'{neighbour}'"
    else:
        inside = literal[1:-1]
        if not inside or "\\" in inside:
            return None
        letters = [m.start() for m in LETTER_CASE.finditer(inside)]
        if letters and draw.random() < 0.25:
            at = draw.choice(letters)
            changed = '"' + inside[:at] + inside[at].swapcase() + inside[at + 1:] + '"'
        else:
            at = draw.randrange(len(inside))
            changed = '"' + inside[:at] + inside[at + 1:] + '"'
    return line[:start] + changed + line[start + len(literal):]


def faults_of(path, source, draw):
    lines = source.split("\n")
    code, literals = literals_apart(source)
    made = []
    previous = ""
    for number, line in enumerate(lines):
        if not LEFT_OUT.search(code[number]):
            made += [Fault(path, kind, ((number, text),))
                     for kind, text in of_line(line, code[number], previous, draw)]
            if number + 1 < len(lines):
                mine, next_one = first_field(code[number]), first_field(code[number + 1])
                if mine and next_one:
                    below = lines[number + 1]
                    made.append(Fault(path, "swapped", (
                        (number, line[:mine[0]] + below[next_one[0]:next_one[1]] + line[mine[1]:]),
                        (number + 1, below[:next_one[0]] + line[mine[0]:mine[1]] + below[next_one[1]:]))))
                    # Seldom: in most tables the order of the rows changes nothing.
                    if draw.random() < 0.25:
                        made.append(Fault(path, "order", ((number, below), (number + 1, line))))
        if code[number].strip():
            previous = code[number]
    for number, start, literal in literals:
        if not LEFT_OUT.search(code[number]):
            changed = of_literal(lines[number], start, literal, draw)
            if changed:
                made.append(Fault(path, "literal", ((number, changed),)))
    return [fault for fault in made if fault.text(source) != source]


def drawn(sources, seed):
    """All faults of {path: text}, in the order of the seed: first one of each line, then the second ones."""
    draw = random.Random(seed)
    by_line = {}
    for path in sorted(sources):
        for fault in faults_of(path, sources[path], draw):
            by_line.setdefault((path, fault.lines[0][0]), []).append(fault)
    for faults in by_line.values():
        draw.shuffle(faults)
    ordered = []
    for turn in range(max((len(f) for f in by_line.values()), default=0)):
        having = [faults[turn] for faults in by_line.values() if len(faults) > turn]
        draw.shuffle(having)
        ordered += having
    return ordered
