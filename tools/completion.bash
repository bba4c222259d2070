# Completion of the tools' and the tour's options for bash: source this file. The options are those that each
# program's --help lists.
_tamor_tool()
{
    local word=${COMP_WORDS[COMP_CWORD]} options
    COMPREPLY=()
    if [[ $word == -* ]]; then
        options=$("$1" --help 2>/dev/null | sed -n 's/^  \(--[a-z-]*\).*/\1/p')
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
    fi
}
complete -o default -F _tamor_tool tamor-check tamor-script tamor-tour tamor-view
