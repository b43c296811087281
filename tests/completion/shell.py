"""Asks a real bash for completions: by calling the function that is registered for a command, and by pressing TAB."""

import os
import pty
import re
import select
import subprocess
import time
from dataclasses import dataclass
from pathlib import Path

PACKAGE = "/usr/share/bash-completion/bash_completion"
# What bash does before and after it calls the function. Outside a completion compopt would only complain.
ASK = r"""
. %(package)s
for file in "$COMPLETIONS"/*; do . "$file"; done
compopt() { printf 'option %%s\n' "$2"; }
%(settings)s
while IFS= read -r COMP_LINE; do
    COMP_WORDS=() COMPREPLY=() COMP_POINT=${#COMP_LINE}
    while IFS= read -r word && [[ $word != . ]]; do COMP_WORDS+=("${word#:}"); done
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    function=$(complete -p "${COMP_WORDS[0]##*/}") function=${function#*-F } function=${function%% *}
    "$function" "${COMP_WORDS[0]}" "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD - 1]}"
    [[ ${#COMPREPLY[@]} -eq 0 ]] || printf 'word %%s\n' "${COMPREPLY[@]}"
    echo done
done
"""


@dataclass
class Offer:
    words: list[str]
    options: list[str]


def split_line(line: str) -> list[str]:
    """As readline does: blanks part words, '=' and ':' are words of their own, what is quoted stays together."""
    words = re.findall(r"(?:'[^']*(?:'|$)|\"[^\"]*(?:\"|$)|\$\([^)]*\)|`[^`]*`|\\.|[^\s=:'\"\\])+|[=:]+", line)
    return words if line and not line[-1].isspace() else [*words, ""]


def ask(completions: Path, environment: dict[str, str], lines: list[str], settings: str = "",
        cwd: Path | None = None) -> list[Offer]:
    """What is offered behind each of the lines. All are asked of one shell."""
    text = "".join("\n".join([line, *(":" + word for word in split_line(line)), "."]) + "\n" for line in lines)
    run = subprocess.run(["bash", "--norc", "-c", ASK % {"package": PACKAGE, "settings": settings}], input=text,
                         env={**environment, "COMPLETIONS": str(completions)}, cwd=cwd, capture_output=True,
                         text=True, timeout=120, check=False)
    if run.stderr or run.returncode != 0 or run.stdout.count("done\n") != len(lines):
        raise AssertionError(f"completion ended with {run.returncode} and said: {run.stderr}{run.stdout[-500:]}")
    offers = []
    for part in run.stdout.split("done\n")[:-1]:
        found = [line.split(" ", 1) for line in part.splitlines()]
        offers.append(Offer([rest for kind, rest in found if kind == "word"],
                            [rest for kind, rest in found if kind == "option"]))
    return offers


class Terminal:
    """An interactive bash. It loads completions on demand from XDG_DATA_DIRS, as from an installed package."""

    def __init__(self, environment: dict[str, str], cwd: Path) -> None:
        self.process, self.terminal = pty.fork()
        if self.process == 0:
            os.chdir(cwd)
            os.execvpe("bash", ["bash", "--norc", "--noprofile", "-i"], {**environment, "TERM": "dumb", "PS1": "$ "})
        self.send(f". {PACKAGE}; bind 'set bell-style none' 'set enable-bracketed-paste off'\n"
                  r"""bind -x '"\C-xl": printf "line<%s>\n" "$READLINE_LINE"'; echo re''ady""" "\n")
        self.wait_for("ready\r\n")

    def send(self, text: str) -> None:
        os.write(self.terminal, text.encode())

    def wait_for(self, pattern: str) -> re.Match:
        text = ""
        end = time.monotonic() + 30
        while not (found := re.search(pattern, text)):
            ready, _, _ = select.select([self.terminal], [], [], max(0.0, end - time.monotonic()))
            if not ready:
                raise AssertionError(f"no '{pattern}' within half a minute, only: {text!r}")
            text += os.read(self.terminal, 65536).decode("utf-8", "replace")
        return found

    def line_after(self, keys: str) -> str:
        """What the command line holds when these keys have been pressed."""
        self.send(keys + "\x18l")
        line = self.wait_for(r"line<(.*)>")[1]
        self.send("\x15")
        return line

    def close(self) -> None:
        self.send("\x15exit\n")
        os.waitpid(self.process, 0)
        os.close(self.terminal)
