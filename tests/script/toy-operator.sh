#!/bin/sh
# Adds the operator that docs/script-engine.md adds, in a copy of script/, by the page's own listing,
# and lets a script use it.
#
#     toy-operator.sh SOURCE-FOLDER COMPILER
set -eu
source=$1
compiler=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp -r "$source/script" "$source/TamorExport.h" "$work"
cd "$work"

# The page leaves the line numbers out; each piece of the listing replaces lines that occur once.
python3 - "$source/docs/script-engine.md" <<'PY'
import re, sys
listing = re.search(r"```diff\n(.*?)```", open(sys.argv[1]).read(), re.S).group(1)
for part in re.split(r"^--- .*\n", listing, flags=re.M)[1:]:
    name = re.match(r"\+\+\+ b/(.*)\n", part).group(1)
    text = open(name).read()
    for piece in re.split(r"^@@\n", part, flags=re.M)[1:]:
        lines = piece.splitlines()
        old = "".join(line[1:] + "\n" for line in lines if line[0] == "-")
        new = "".join(line[1:] + "\n" for line in lines if line[0] == "+")
        assert text.count(old) == 1, (name, old)
        text = text.replace(old, new)
    open(name, "w").write(text)
PY

cat > main.cpp <<'CPP'
#include "script/ScriptInterpreter.h"

int main()
{
    tamor::ScriptInterpreter interpreter;
    std::vector<tamor::ScriptToken> list;
    parseText(interpreter, list,
              "a = 3; for (i = 0; i < 3; i = i + 1) { x = (a ~ 5); y = (7.5 ~ a); }");
    runTokens(interpreter, list);
    tamor::ScriptValue left(3);
    tamor::ScriptValue right(2);
    const bool isRight = interpreter.variables["x"].number == 5 &&
                         interpreter.variables["y"].asFloat() == 7.5F &&
                         applyOperator(interpreter, left, 20, right).number == 3;
    return isRight ? 0 : 1;
}
CPP
ls script/*.cpp script/internal/*.cpp main.cpp |
    xargs -P 2 -I FILE sh -c "$compiler -std=c++20 -O0 -I. -c FILE -o \$(echo FILE | tr / -).o"
"$compiler" ./*.o -o toy
./toy
