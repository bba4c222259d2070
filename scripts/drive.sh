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
type_keys() { for key in "$@"; do xdotool keydown "$key"; sleep 0.1; xdotool keyup "$key"; sleep 0.05; done; }

# drag X Y DX DY: in steps, since a slider follows the pointer only while it is near.
drag()
{
    local step
    point "$1" "$2"
    press
    for step in 1 2 3 4 5 6; do
        xdotool mousemove --window "$window" $(($1 + $3 * step / 6)) $(($2 + $4 * step / 6))
        sleep 0.05
    done
    release
}

# picture NAME: a screenshot, taken when lights have faded.
picture()
{
    sleep 0.6
    take "$pictures/$1.png"
}

within 30 find_window || fail "the program did not open its window; its error stream is in $log"
within 30 has_drawn || fail "the program did not draw; its error stream is in $log"
# The places are those of data/my.gui, in pixels from the window's top left corner.
free="400 395"
point $free
picture sliders

drag 36 215 0 101
drag 70 215 0 52
drag 104 215 0 -24
drag 307 96 73 0
drag 307 171 -88 0
click 257 21
click 167 110
point $free
picture options
click 335 21
click 167 72
click 167 148
click 307 540
type_keys d e a r space d i a r y comma Return t o d a y space i space t r i e d space t h e space q u i l l period
click 600 91
point 580 140
picture list
click 580 140
point $free
picture checks

click 70 530
point $free
picture message-ok
click 400 341
click 70 402
point $free
picture message-ok-cancel
click 345 341
click 70 426
point $free
picture message-yes-no
click 364 341
click 70 450
point $free
picture message-yes-no-cancel
click 375 341
click 182 21
point $free
within 10 grep -q ' FPS$' "$log" || fail "the program reported no frame rate; its error stream is in $log"
sleep 0.6

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
