"""Finds the places of a C++ source where a small fault can be planted, with clang's own parser."""

from clang import cindex
from clang.cindex import CursorKind as Kind

# What stands for an operator instead; several words are several faults.
OPERATORS = {
    "<": ["<=", ">="],
    "<=": ["<", ">"],
    ">": [">=", "<="],
    ">=": [">", "<"],
    "==": ["!="],
    "!=": ["=="],
    "+": ["-"],
    "-": ["+"],
    "*": ["/"],
    "/": ["*"],
    "%": ["*"],
    "&&": ["||"],
    "||": ["&&"],
    "&": ["|"],
    "|": ["&"],
    "^": ["|"],
    "<<": [">>"],
    ">>": ["<<"],
    "+=": ["-="],
    "-=": ["+="],
    "*=": ["/="],
    "/=": ["*="],
    "|=": ["&="],
    "&=": ["|="],
}
OPPOSED = {"<", "<=", ">", ">=", "==", "!=", "&&", "||"}
UNARY = {"++": "--", "--": "++"}
BODIES = {
    Kind.COMPOUND_STMT,
    Kind.IF_STMT,
    Kind.FOR_STMT,
    Kind.WHILE_STMT,
    Kind.DO_STMT,
    Kind.CXX_FOR_RANGE_STMT,
    Kind.CASE_STMT,
    Kind.DEFAULT_STMT,
}
# Statements that can be left out; what declares a name cannot.
STATEMENTS = {
    Kind.CALL_EXPR,
    Kind.BINARY_OPERATOR,
    Kind.COMPOUND_ASSIGNMENT_OPERATOR,
    Kind.UNARY_OPERATOR,
    Kind.CXX_THROW_EXPR,
    Kind.BREAK_STMT,
    Kind.CONTINUE_STMT,
    Kind.CXX_DELETE_EXPR,
}


def merely_wraps(cursor):
    """Implicit conversions and temporaries have no text of their own."""
    return cursor.kind == Kind.UNEXPOSED_EXPR


def bare(cursor):
    while merely_wraps(cursor):
        children = list(cursor.get_children())
        if len(children) != 1:
            break
        cursor = children[0]
    return cursor


class Finder:
    def __init__(self, path, arguments):
        self.path = path
        with open(path, "rb") as file:
            self.bytes = file.read()
        unit = cindex.Index.create().parse(path, args=arguments)
        errors = [d for d in unit.diagnostics if d.severity >= cindex.Diagnostic.Error]
        if errors:
            raise RuntimeError(f"{path} cannot be parsed: {errors[0]}")
        self.found = {}
        for child in unit.cursor.get_children():
            if self.is_here(child):
                self.visit(child, None)

    def is_here(self, cursor):
        file = cursor.location.file
        return file is not None and file.name == self.path

    def span(self, cursor):
        """The bytes of a cursor; None if they come from a macro or another file."""
        extent = cursor.extent
        start, end = extent.start, extent.end
        if start.file is None or end.file is None or start.file.name != self.path or end.file.name != self.path:
            return None
        return (start.offset, end.offset) if start.offset < end.offset else None

    def text(self, span):
        return self.bytes[span[0] : span[1]].decode()

    def plant(self, span, text):
        if self.text(span) != text:
            line = self.bytes.count(b"\n", 0, span[0]) + 1
            self.found[(line, span[0], span[1], text)] = self.text(span)

    def operator_between(self, cursor, left, right):
        """The operator's own token, which stands between its operands."""
        for token in cursor.get_tokens():
            if left[1] <= token.extent.start.offset and token.extent.end.offset <= right[0]:
                if token.spelling in OPERATORS:
                    return token.spelling, (token.extent.start.offset, token.extent.end.offset)
        return None

    def visit(self, cursor, parent):
        span = self.span(cursor)
        children = list(cursor.get_children())
        if span is not None:
            self.look_at(cursor, span, children, parent)
        for child in children:
            if child.kind != Kind.STATIC_ASSERT:
                self.visit(child, cursor)

    def look_at(self, cursor, span, children, parent):
        kind = cursor.kind
        if kind in (Kind.BINARY_OPERATOR, Kind.COMPOUND_ASSIGNMENT_OPERATOR):
            self.change_operator(cursor)
        elif kind == Kind.CALL_EXPR:
            self.change_operator(cursor)
            self.swap_arguments(cursor)
        elif kind == Kind.UNARY_OPERATOR:
            self.change_unary(cursor, span, children)
        elif kind == Kind.INTEGER_LITERAL:
            self.change_number(span)
        elif kind == Kind.FLOATING_LITERAL:
            self.plant(span, f"({self.text(span)} + 1)")
        elif kind == Kind.CXX_BOOL_LITERAL_EXPR:
            self.plant(span, "false" if self.text(span) == "true" else "true")
        elif kind == Kind.CHARACTER_LITERAL:
            self.plant(span, f"decltype({self.text(span)})({self.text(span)} + 1)")
        elif kind == Kind.STRING_LITERAL:
            self.change_string(span)
        elif kind in (Kind.IF_STMT, Kind.WHILE_STMT, Kind.CONDITIONAL_OPERATOR) and children:
            self.negate(children[0])
        elif kind == Kind.RETURN_STMT:
            self.change_return(cursor, span, children)
        if parent is not None and parent.kind in BODIES and bare(cursor).kind in STATEMENTS:
            self.leave_out(cursor, span, parent)

    def operator_of(self, cursor):
        """Its word and its span. Of an overloaded operator the children are the left side, its name and the right side."""
        if cursor.kind == Kind.CALL_EXPR and not cursor.spelling.startswith("operator"):
            return None
        children = list(cursor.get_children())
        if cursor.kind not in (Kind.BINARY_OPERATOR, Kind.COMPOUND_ASSIGNMENT_OPERATOR, Kind.CALL_EXPR) or len(children) < 2:
            return None
        left, right = self.span(children[0]), self.span(children[-1])
        return self.operator_between(cursor, left, right) if left and right else None

    def change_operator(self, cursor):
        found = self.operator_of(cursor)
        # Of the overloaded operators only those that compare have an opposite that compiles.
        if found is None or (cursor.kind == Kind.CALL_EXPR and found[0] not in OPPOSED):
            return
        for text in OPERATORS[found[0]]:
            self.plant(found[1], text)
        if found[0] in ("&&", "||"):
            children = list(cursor.get_children())
            self.negate(children[0])
            self.negate(children[-1])

    def change_unary(self, cursor, span, children):
        first = next(cursor.get_tokens(), None)
        if first is None or not children:
            return
        inner = self.span(children[0])
        if inner is None:
            return
        if first.spelling in ("!", "-", "~") and span[0] < inner[0]:
            self.plant((span[0], inner[0]), "")
        for word, text in UNARY.items():
            if first.spelling == word:
                self.plant((span[0], span[0] + 2), text)
            elif self.text((span[1] - 2, span[1])) == word:
                self.plant((span[1] - 2, span[1]), text)

    def change_number(self, span):
        text = self.text(span)
        self.plant(span, {"0": "1", "1": "0"}.get(text, f"({text} + 1)"))

    def change_string(self, span):
        text = self.text(span)
        start, end = text.find('"'), text.rfind('"')
        if start >= 0 and end == len(text) - 1 and "R" not in text[:start]:
            self.plant(span, text[: start + 1] + ("" if end > start + 1 else "?") + '"')

    def negate(self, condition):
        """Unless another fault does the same: a comparison is changed to its opposite, a `!` is left out."""
        span = self.span(condition)
        if span is None or not condition.kind.is_expression():
            return
        inner = bare(condition)
        found = self.operator_of(inner)
        if (found is None or found[0] not in OPPOSED) and not self.text(span).startswith("!"):
            self.plant(span, f"!({self.text(span)})")

    def change_return(self, cursor, span, children):
        if not children:
            self.plant(span, "(void)0")
            return
        value = children[0]
        inner = self.span(value)
        if inner and value.type.get_canonical().kind == cindex.TypeKind.BOOL:
            self.plant(inner, f"!({self.text(inner)})")

    def swap_arguments(self, cursor):
        arguments = [a for a in cursor.get_arguments()]
        for one, other in zip(arguments, arguments[1:]):
            first, second = self.span(one), self.span(other)
            if not first or not second or first[1] > second[0] or first == second:
                continue
            if one.type.get_canonical().spelling == other.type.get_canonical().spelling:
                between = self.text((first[1], second[0]))
                if between.strip() == ",":
                    self.plant((first[0], second[1]), self.text(second) + between + self.text(first))

    def leave_out(self, cursor, span, parent):
        # A condition is no statement, nor is what a loop counts with.
        children = list(parent.get_children())
        if parent.kind in (Kind.IF_STMT, Kind.WHILE_STMT) and cursor == children[0]:
            return
        if parent.kind in (Kind.FOR_STMT, Kind.CXX_FOR_RANGE_STMT) and cursor != children[-1]:
            return
        if parent.kind == Kind.DO_STMT and cursor != children[0]:
            return
        # What is left uses the names, so that nothing is said to be unused.
        self.plant(span, "(void)0")


def places_of(path, arguments):
    """A list of (line, start, end, new text, old text) in the order of the source; start and end count bytes."""
    found = Finder(path, arguments).found
    return sorted((*key, old) for key, old in found.items())
