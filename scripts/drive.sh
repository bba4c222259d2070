# Part of scripts/demo: runs $program in $data under Xvfb and uses it as a person would, through the
# real pointer and the real keyboard. Leaves screenshots in $pictures, the last one in $last_picture.
# It waits for frames and for what it expects to see, never for a time: $frame_counter keeps the
# number of frames that the program has shown.

log=$pictures/error-stream.txt
frames=$pictures/frames.txt
mkdir -p "$pictures" "$(dirname "$last_picture")"
start_display

echo 0 >"$frames"
(cd "$data" && exec env LD_PRELOAD="$frame_counter" TAMOR_FRAMES="$frames" "$program" "${arguments[@]}" 2>"$log" </dev/null) &
demo=$!
trap 'kill "$demo" 2>/dev/null || true; end_display' EXIT

is_running() { kill -0 "$demo" 2>/dev/null; }

# within SECONDS COMMAND...: asks again until the command succeeds, the program ends or time is up.
within()
{
    local deadline=$((SECONDS + $1))
    shift
    until "$@"; do
        is_running && [[ $SECONDS -lt $deadline ]] || return 1
        sleep 0.02
    done
}

# shown COUNT: waits until the program has shown that many more frames. Two are enough for input to
# be read, four for it to be seen as well.
has_shown() { read -r frame <"$frames" && [[ $frame -ge $1 ]]; }
shown()
{
    local first
    read -r first <"$frames"
    within 60 has_shown $((first + $1)) || fail "the program shows no more frames; its error stream is in $log"
}

find_window() { window=$(xdotool search --onlyvisible --name '^Tamor Application$' 2>/dev/null | head -n 1) && [[ -n $window ]]; }
take() { import -silent -window "$window" "$1"; }
pixels() { import -silent -window "$window" rgb:- | cksum; }
colours() { import -silent -window "$window" rgb:- | convert -size 800x600 -depth 8 rgb:- -format '%k' info:; }
has_drawn() { [[ $(colours) -gt 20 ]]; }

# A key or button that goes down and up between two frames is not seen, so each is held for two.
point() { xdotool mousemove --window "$window" "$1" "$2"; shown 2; }
press() { xdotool mousedown 1; shown 2; }
release() { xdotool mouseup 1; shown 2; }
click() { point "$1" "$2"; press; release; }
type_keys() { for key in "$@"; do xdotool keydown "$key"; shown 2; xdotool keyup "$key"; shown 2; done; }

# drag X Y DX DY: in steps, since a slider follows the pointer only while it is near.
drag()
{
    local step
    point "$1" "$2"
    press
    for step in 1 2 3 4 5 6; do
        point $(($1 + $3 * step / 6)) $(($2 + $4 * step / 6))
    done
    release
}

# picture FILE: a screenshot, taken when lights have faded, of something that was not seen before.
seen=
stands_still()
{
    still=$(pixels)
    shown 8
    [[ $(pixels) == "$still" ]]
}
picture()
{
    shown 4
    within 60 stands_still || fail "the window does not come to rest for $1"
    [[ $seen != *"$still"* ]] || fail "nothing new is seen for $1"
    seen+=" $still"
    take "$1"
}

within 30 find_window || fail "the program did not open its window; its error stream is in $log"
within 30 has_drawn || fail "the program did not draw; its error stream is in $log"
# The places are those of data/my.gui, in pixels from the window's top left corner.
free="400 395"
point $free
picture "$pictures/sliders.png"

drag 36 215 0 101
drag 70 215 0 52
drag 104 215 0 -24
drag 307 96 73 0
drag 307 171 -88 0
click 257 21
click 167 110
point $free
picture "$pictures/options.png"
click 335 21
click 167 72
click 167 148
click 307 540
type_keys d e a r space d i a r y comma Return t o d a y space i space t r i e d space t h e space q u i l l period
click 600 91
point 580 140
picture "$pictures/list.png"
click 580 140
point $free
picture "$pictures/checks.png"

click 70 530
point $free
picture "$pictures/message-ok.png"
click 400 341
click 70 402
point $free
picture "$pictures/message-ok-cancel.png"
click 345 341
click 70 426
point $free
picture "$pictures/message-yes-no.png"
click 364 341
click 70 450
point $free
picture "$pictures/message-yes-no-cancel.png"
click 375 341
click 182 21
point $free
within 60 grep -q ' FPS$' "$log" || fail "the program reported no frame rate; its error stream is in $log"
picture "$last_picture"
rm -f "$frames"
is_running || fail "the program ended before Escape; its error stream is in $log"

xdotool keydown Escape
within 60 false || true
xdotool keyup Escape
is_running && fail "the program did not end on Escape; its error stream is in $log"
status=0
wait "$demo" || status=$?

say "screenshots are in $pictures, the last one is $last_picture"
say "the program ended with status $status on Escape"
exit "$status"
