"""Completion in Bash, also of keys that hold a colon.

Bash parts words at colons and replaces only what stands behind the last one. So the whole line is handed over instead
of Bash's words, and of what completes "3:1" the part behind the last colon is given back. Files beside keys are found
by Bash itself.
"""

from __future__ import annotations

import os
import shlex

from click.shell_completion import BashComplete, CompletionItem, add_completion_class

SOURCE = """\
%(complete_func)s() {
    local IFS=$'\\n'
    local response completion type value
    response=$(env COMP_LINE="${COMP_LINE:0:COMP_POINT}" COMP_WORDBREAKS="$COMP_WORDBREAKS" \\
        %(complete_var)s=bash_complete "$1")
    for completion in $response; do
        IFS=',' read -r type value <<< "$completion"
        case $type in
            plain) COMPREPLY+=("$value") ;;
            dir) compopt -o dirnames ;;
            file)
                compopt -o default
                [[ ${#COMPREPLY[@]} -gt 0 && -n $value && $value != *:* ]] && COMPREPLY+=($(compgen -f -- "$value")) ;;
        esac
    done
    return 0
}

complete -o nosort -F %(complete_func)s %(prog_name)s
"""


class WholeLine(BashComplete):
    """Bash, by the line up to the cursor."""

    source_template = SOURCE

    def get_completion_args(self) -> tuple[list[str], str]:
        words = words_of(os.environ["COMP_LINE"])
        return words[1:-1], words[-1]

    def format_completion(self, item: CompletionItem) -> str:
        begun = words_of(os.environ["COMP_LINE"])[-1]
        kept = begun.rfind(":") + 1 if ":" in os.environ.get("COMP_WORDBREAKS", ":") else 0
        return f"{item.type},{item.value[kept:] if item.type == 'plain' else item.value}"


def words_of(line: str) -> list[str]:
    """The words of a line, the last of them the one that is being typed, "" behind a blank; a quote may be open."""
    for closing in ("", "'", '"'):
        try:
            words = shlex.split(line + closing)
        except ValueError:
            continue
        return words if line == line.rstrip() else [*words, ""]
    return line.split()


add_completion_class(WholeLine)
