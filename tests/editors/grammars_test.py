"""The grammars of editors/, as an editor reads them: of the rules of a grammar the one that matches first
counts, and of two at the same place the upper one. What is used here of TextMate's language is what the
grammars use of it: match, begin and end, and captures."""

import json
import pathlib
import re
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
SAMPLES = [
    ("tamor-layout", ROOT.glob("data/*.gui")),
    ("tamor-theme", [*ROOT.glob("data/*.theme"), ROOT / "data/gui.conf.in"]),
    ("tamor-script", ROOT.glob("examples/scripts/*.script")),
]


class Grammar:
    def __init__(self, name):
        path = ROOT / "editors/syntaxes" / f"{name}.tmLanguage.json"
        self.grammar = json.loads(path.read_text())

    def tokens(self, line):
        """The pieces of a line that have a scope, each with the innermost one."""
        scopes = [None] * len(line)
        self._read(line, 0, self.grammar["patterns"], None, scopes)
        pieces = []
        for at, scope in enumerate(scopes):
            if scope is None:
                continue
            if at > 0 and scopes[at - 1] is scope:
                pieces[-1][0] += line[at]
            else:
                pieces.append([line[at], scope])
        return [(text.strip(), str(scope)) for text, scope in pieces]

    def _read(self, line, at, rules, end, scopes):
        while at < len(line):
            found = [(rule, re.compile(rule.get("match", rule.get("begin"))).search(line, at)) for rule in rules]
            found = [(rule, match) for rule, match in found if match and match.end() > match.start()]
            ending = re.compile(end).search(line, at) if end else None
            if not found and not ending:
                return len(line)
            rule, match = min(found, key=lambda pair: pair[1].start(), default=(None, ending))
            if ending and ending.start() <= match.start():
                return ending.end()
            at = match.end()
            if "begin" in rule:
                at = self._read(line, at, rule["patterns"], rule["end"], inner := [None] * len(line))
                self._mark(scopes, match.start(), at, rule["name"])
                scopes[:] = [own or outer for own, outer in zip(inner, scopes)]
            if "name" in rule and "match" in rule:
                self._mark(scopes, *match.span(), rule["name"])
            for group, capture in rule.get("captures", {}).items():
                if match.start(int(group)) >= 0:
                    self._mark(scopes, *match.span(int(group)), capture["name"])
        return at

    @staticmethod
    def _mark(scopes, start, stop, name):
        class Scope(str):  # each piece is an object of its own, also beside its like
            pass

        scopes[start:stop] = [Scope(name)] * (stop - start)


def short(tokens):
    """Without the name of the grammar, which ends every scope."""
    return [(text, scope.rsplit(".", 1)[0]) for text, scope in tokens]


class Grammars(unittest.TestCase):
    def test_every_character_of_every_sample_means_something(self):
        count = 0
        for name, files in SAMPLES:
            grammar = Grammar(name)
            for file in files:
                for number, line in enumerate(file.read_text().splitlines(), 1):
                    tokens = grammar.tokens(line)
                    with self.subTest(file=file.name, line=number):
                        self.assertEqual("".join("".join(text.split()) for text, _ in tokens), "".join(line.split()))
                        self.assertEqual([text for text, scope in tokens if scope.startswith("invalid")], [])
                    count += 1
        self.assertGreater(count, 300)

    def test_each_directive_and_kind_of_the_manual_is_a_word_of_layouts(self):
        page = (ROOT / "docs/layout-files.md").read_text()
        words = re.findall(r"^\| `([A-Z]\w+)` \|", page, re.M)
        self.assertGreater(len(words), 18)
        rules = (ROOT / "editors/syntaxes/tamor-layout.tmLanguage.json").read_text()
        for word in words:
            self.assertRegex(rules, rf"[(|]{word}[|)]")

    def test_a_layout(self):
        layout = Grammar("tamor-layout")
        self.assertEqual(
            short(layout.tokens("CADD Slide red main 0.05 -.6 0 1.02 behind it")),
            [
                ("CADD", "keyword.control"),
                ("Slide", "support.type"),
                ("red", "entity.name"),
                ("main", "variable.parameter"),
                ("0.05", "constant.numeric"),
                ("-.6", "constant.numeric"),
                ("0", "constant.numeric"),
                ("1.02", "constant.numeric"),
                ("behind it", "comment.line"),
            ],
        )
        self.assertEqual(
            short(layout.tokens("TADD 2 pages Check lamp 0.02 0.44 Light the lamp"))[3:],
            [
                ("Check", "support.type"),
                ("lamp", "entity.name"),
                ("0.02", "constant.numeric"),
                ("0.44", "constant.numeric"),
                ("Light the lamp", "string.unquoted"),
            ],
        )
        self.assertEqual(short(layout.tokens("// CADD")), [("// CADD", "comment.line")])
        self.assertEqual(short(layout.tokens("cadd Butt a NULL 0 0 A")), [("cadd Butt a NULL 0 0 A", "comment.line")])
        self.assertEqual(short(layout.tokens("CADD Gauge g main 0 0 7 x"))[1], ("Gauge", "entity.name.type"))
        for wrong in ["CADD Slide red main 0.05 0.6 0", "CADD Label a NULL x 0 A", "TADD pages 0 Label a 0 0 A", "CONF"]:
            self.assertEqual(short(layout.tokens(wrong)), [(wrong, "invalid.illegal.fields")])

    def test_a_theme(self):
        theme = Grammar("tamor-theme")
        self.assertEqual(
            short(theme.tokens("1 0.71 0.16   edges")), [("1 0.71 0.16", "constant.numeric"), ("edges", "comment.line")]
        )
        self.assertEqual(
            short(theme.tokens("gui.tga   texture")), [("gui.tga", "string.other.file"), ("texture", "comment.line")]
        )
        self.assertEqual(short(theme.tokens("NULL")), [("NULL", "constant.language")])

    def test_a_script(self):
        script = Grammar("tamor-script")
        self.assertEqual(
            short(script.tokens("func say-it(who) { print(\"it''s \" + who, -.5); return 1; }")),
            [
                ("func", "keyword.declaration"),
                ("say-it", "entity.name.function"),
                ("(", "punctuation"),
                ("who", "variable.other"),
                (")", "punctuation"),
                ("{", "punctuation"),
                ("print", "entity.name.function"),
                ("(", "punctuation"),
                ('"it', "string.quoted.double"),
                ("''", "constant.character.escape"),
                ('s "', "string.quoted.double"),
                ("+", "keyword.operator"),
                ("who", "variable.other"),
                (",", "punctuation"),
                ("-.5", "constant.numeric"),
                (")", "punctuation"),
                (";", "punctuation"),
                ("return", "keyword.control"),
                ("1", "constant.numeric"),
                (";", "punctuation"),
                ("}", "punctuation"),
            ],
        )
        self.assertEqual(short(script.tokens("if (a == true)"))[0], ("if", "keyword.control"))
        self.assertEqual(short(script.tokens("a ? b"))[1], ("?", "invalid.illegal"))

    def test_an_editor_is_told_of_each_grammar(self):
        told = json.loads((ROOT / "editors/package.json").read_text())["contributes"]["grammars"]
        self.assertEqual(
            sorted(entry["path"].rsplit("/", 1)[1] for entry in told),
            sorted(path.name for path in (ROOT / "editors/syntaxes").iterdir()),
        )
        for entry in told:
            grammar = json.loads((ROOT / "editors" / entry["path"]).read_text())
            self.assertEqual(grammar["scopeName"], entry["scopeName"])


if __name__ == "__main__":
    sys.dont_write_bytecode = True
    unittest.main()
