# Part of scripts/demo: runs $program in $data under Xvfb and uses it as a person would, through the
# real pointer and the real keyboard. Leaves screenshots in $pictures, the last one in $last_picture.

log=$pictures/error-stream.txt
mkdir -p "$pictures" "$(dirname "$last_picture")"
start_display

(cd "$data" && exec "$program" 2>"$log" </dev/null) &
demo=$!
trap 'kill "$demo" "$display_process" 2>/dev/null || true' EXIT

is_running() { kill -0 "$demo" 2>/dev/null; }

# within SECONDS COMMAND...: asks again until the command succeeds, the program ends or time is up.
within()
{
    local deadline=$((SECONDS + $1))
    shift
    until "$@"; do
        is_running && [[ $SECONDS -lt $deadline ]] || return 1
        sleep 0.1
    done
}

find_window() { window=$(xdotool search --onlyvisible --name '^Tamor Application$' 2>/dev/null | head -n 1) && [[ -n $window ]]; }
take() { import -silent -window "$window" "$1"; }
colours() { take "$pictures/probe.png" && convert "$pictures/probe.png" -format '%k' info:; }
has_drawn() { [[ $(colours) -gt 20 ]]; }

# A key or button that goes down and up between two frames is not seen, so each is held for a while.
hold=0.15
point() { xdotool mousemove --window "$window" "$1" "$2"; sleep "$hold"; }
press() { xdotool mousedown 1; sleep "$hold"; }
release() { xdotool mouseup 1; sleep "$hold"; }
click() { point "$1" "$2"; press; release; }
drag() { point "$1" "$2"; press; xdotool mousemove_relative --sync -- "$(($3 / 2))" "$(($4 / 2))"; point "$(($1 + $3))" "$(($2 + $4))"; release; }

within 30 find_window || fail "the program did not open its window; its error stream is in $log"
within 30 has_drawn || fail "the program did not draw; its error stream is in $log"
point 400 590
take "$pictures/start.png"

take "$last_picture"
rm -f "$pictures/probe.png"
is_running || fail "the program ended before Escape; its error stream is in $log"

xdotool keydown Escape
within 10 false || true
xdotool keyup Escape
is_running && fail "the program did not end on Escape; its error stream is in $log"
status=0
wait "$demo" || status=$?

say "screenshots are in $pictures, the last one is $last_picture"
say "the program ended with status $status on Escape"
exit "$status"
