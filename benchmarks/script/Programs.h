/// \file
/// The programs of the script benchmarks, each in three languages.
#pragma once

namespace tamor
{
/// One program; each language leaves the number in `result` or returns it.
struct ScriptProgram
{
    const char* name;
    double result;
    const char* tamor;
    const char* python;
    const char* lua;
};

constexpr ScriptProgram scriptPrograms[] = {
    {"count", 1000000,
     R"(i = 0;
        while (i < 1000000) { i = i + 1; }
        result = i;)",
     R"(
def program():
    i = 0
    while i < 1000000:
        i = i + 1
    return i
)",
     R"(local i = 0
        while i < 1000000 do i = i + 1 end
        return i)"},
    {"nested_floats", 199.5,
     R"(for (i = 0; i < 400; i = i + 1) {
            x = .5;
            for (k = 0; k < 400; k = k + 1) { x = x * .5 + k * .25; }
        }
        result = x + .5;)",
     R"(
def program():
    i = 0
    while i < 400:
        x = 0.5
        k = 0
        while k < 400:
            x = x * .5 + k * .25
            k = k + 1
        i = i + 1
    return x + 0.5
)",
     R"(local x
        local i = 0
        while i < 400 do
            x = 0.5
            local k = 0
            while k < 400 do
                x = x * .5 + k * .25
                k = k + 1
            end
            i = i + 1
        end
        return x + 0.5)"},
    {"calls", 200000,
     R"(i = 0;
        while (i < 200000) { i = next(i); }
        result = i;
        func next(a) { a + 1; })",
     R"(
def next(a):
    return a + 1
def program():
    i = 0
    while i < 200000:
        i = next(i)
    return i
)",
     R"(local function next(a) return a + 1 end
        local i = 0
        while i < 200000 do i = next(i) end
        return i)"},
    {"bare_calls", 200000,
     R"(i = 0;
        while (i < 200000) { f(i); i = i + 1; }
        result = i;
        func f(a) { a + 1; })",
     R"(
def f(a):
    return a + 1
def program():
    i = 0
    while i < 200000:
        f(i)
        i = i + 1
    return i
)",
     R"(local function f(a) return a + 1 end
        local i = 0
        while i < 200000 do f(i) i = i + 1 end
        return i)"},
    {"collatz", 215063,
     R"(steps = 0;
        for (k = 1; k < 3001; k = k + 1) {
            n = k;
            while (n > 1) {
                odd = n % 2;
                if (odd) { n = 3 * n + 1; }
                if (odd == 0) { n = n / 2; }
                steps = steps + 1;
            }
        }
        result = steps;)",
     R"(
def program():
    steps = 0
    for k in range(1, 3001):
        n = k
        while n > 1:
            if n % 2 == 1:
                n = 3 * n + 1
            else:
                n = n // 2
            steps = steps + 1
    return steps
)",
     R"(local steps = 0
        for k = 1, 3000 do
            local n = k
            while n > 1 do
                if n % 2 == 1 then n = 3 * n + 1 else n = n // 2 end
                steps = steps + 1
            end
        end
        return steps)"},
    {"primes", 669,
     R"(count = 0;
        for (n = 2; n < 5000; n = n + 1) {
            prime = 1;
            d = 2;
            while (d * d < n + 1) {
                if (n % d == 0) { prime = 0; d = n; }
                d = d + 1;
            }
            count = count + prime;
        }
        result = count;)",
     R"(
def program():
    count = 0
    n = 2
    while n < 5000:
        prime = 1
        d = 2
        while d * d < n + 1:
            if n % d == 0:
                prime = 0
                d = n
            d = d + 1
        count = count + prime
        n = n + 1
    return count
)",
     R"(local count = 0
        local n = 2
        while n < 5000 do
            local prime = 1
            local d = 2
            while d * d < n + 1 do
                if n % d == 0 then prime = 0 d = n end
                d = d + 1
            end
            count = count + prime
            n = n + 1
        end
        return count)"},
    // As examples/scripts/ has it, with the lines joined where that one prints them.
    {"mandelbrot", 14510,
     R"(picture = "";
        total = 0;
        for (row = 0; row < 21; row++) {
            b = row * .1 + -1;
            line = "";
            for (column = 0; column < 62; column++) {
                a = column * .05 + -2.2;
                x = 0;
                y = 0;
                steps = 0;
                going = true;
                while (going) {
                    next = x * x + y * y * -1 + a;
                    y = 2 * x * y + b;
                    x = next;
                    steps = steps + 1;
                    if (x * x + y * y > 4) { going = false; }
                    if (steps == 30) { going = false; }
                }
                mark = "*";
                if (steps < 30) { mark = "."; }
                if (steps < 6) { mark = " "; }
                line = line + mark;
                total = total + steps;
            }
            picture = picture + line;
        }
        result = total;)",
     R"(
def program():
    picture = ''
    total = 0
    for row in range(21):
        b = row * .1 + -1
        line = ''
        for column in range(62):
            a = column * .05 + -2.2
            x = 0
            y = 0
            steps = 0
            going = True
            while going:
                next = x * x + y * y * -1 + a
                y = 2 * x * y + b
                x = next
                steps = steps + 1
                if x * x + y * y > 4:
                    going = False
                if steps == 30:
                    going = False
            mark = '*'
            if steps < 30:
                mark = '.'
            if steps < 6:
                mark = ' '
            line = line + mark
            total = total + steps
        picture = picture + line
    return total
)",
     R"(local picture = ''
        local total = 0
        for row = 0, 20 do
            local b = row * .1 + -1
            local line = ''
            for column = 0, 61 do
                local a = column * .05 + -2.2
                local x = 0
                local y = 0
                local steps = 0
                local going = true
                while going do
                    local next = x * x + y * y * -1 + a
                    y = 2 * x * y + b
                    x = next
                    steps = steps + 1
                    if x * x + y * y > 4 then going = false end
                    if steps == 30 then going = false end
                end
                local mark = '*'
                if steps < 30 then mark = '.' end
                if steps < 6 then mark = ' ' end
                line = line .. mark
                total = total + steps
            end
            picture = picture .. line
        end
        return total)"},
    {"string", 20000,
     R"(s = "";
        for (i = 0; i < 20000; i = i + 1) { s = s + "x"; }
        result = i;)",
     R"(
def program():
    s = ''
    i = 0
    while i < 20000:
        s = s + 'x'
        i = i + 1
    return len(s)
)",
     R"(local s = ''
        local i = 0
        while i < 20000 do
            s = s .. 'x'
            i = i + 1
        end
        return #s)"},
    {"joins", 20000,
     R"(i = 0;
        while (i < 20000) { t = "name" + i; i = i + 1; }
        result = i;)",
     R"(
def program():
    i = 0
    while i < 20000:
        t = 'name' + str(i)
        i = i + 1
    return i
)",
     R"(local i = 0
        while i < 20000 do
            local t = 'name' .. i
            i = i + 1
        end
        return i)"},
    // Untuned from here on.
    {"gcd", 72949,
     R"(sum = 0;
        for (i = 1; i < 150; i = i + 1) {
            for (k = 1; k < 150; k = k + 1) {
                a = i;
                b = k;
                while (b > 0) { c = a % b; a = b; b = c; }
                sum = sum + a;
            }
        }
        result = sum;)",
     R"(
def program():
    sum = 0
    for i in range(1, 150):
        for k in range(1, 150):
            a = i
            b = k
            while b > 0:
                c = a % b
                a = b
                b = c
            sum = sum + a
    return sum
)",
     R"(local sum = 0
        for i = 1, 149 do
            for k = 1, 149 do
                local a = i
                local b = k
                while b > 0 do local c = a % b; a = b; b = c end
                sum = sum + a
            end
        end
        return sum)"},
    {"elements", 150000,
     R"(a[0] = 0; a[1] = 1; a[2] = 2;
        for (i = 0; i < 50000; i = i + 1) { a[0] = a[0] + a[1] + a[2]; }
        result = a[0];)",
     R"(
def program():
    a = [0, 1, 2]
    for i in range(50000):
        a[0] = a[0] + a[1] + a[2]
    return a[0]
)",
     R"(local a = {0, 1, 2}
        for i = 1, 50000 do a[1] = a[1] + a[2] + a[3] end
        return a[1])"},
    {"scores", 66667,
     R"(func score(word) { if (word == "red") { points = points + 1; } }
        points = 0;
        for (i = 0; i < 100000; i = i + 1) {
            colour = "red";
            if (i % 3 == 2) { colour = "blue"; }
            score(colour);
        }
        result = points;)",
     R"(
points = 0
def score(word):
    global points
    if word == 'red':
        points = points + 1
def program():
    global points
    points = 0
    for i in range(100000):
        colour = 'red'
        if i % 3 == 2:
            colour = 'blue'
        score(colour)
    return points
)",
     R"(local points = 0
        local function score(word) if word == 'red' then points = points + 1 end end
        for i = 0, 99999 do
            local colour = 'red'
            if i % 3 == 2 then colour = 'blue' end
            score(colour)
        end
        return points)"},
};
} // namespace tamor
