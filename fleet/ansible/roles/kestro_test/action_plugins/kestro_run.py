"""Runs one command on a board over SSH, within a time limit, and keeps what it prints while it comes.

The board needs an SSH server and a shell, no Python. What a command has printed is on the controller as soon as it has
arrived, so it is there when the board hangs or vanishes before the command ends. See docs/fleet.md.
"""

import json
import os
import re
import shlex
import signal
import subprocess
import tempfile
import time
from contextlib import ExitStack
from datetime import datetime, timezone
from pathlib import Path

import yaml
from ansible.errors import AnsibleActionFail
from ansible.plugins.action import ActionBase

# Begins the command and ends it when its time is up: as politely as possible first, since kestro_test then puts back
# what it has written to the board. The last line on standard error tells the controller that the command has ended and
# not the connection; the status of ssh is 255 for both.
ON_BOARD = r"""
limit=$1 grace=$2
shift 2
exec 4<&0
"$@" <&4 2>&1 &
check=$!
exec 4<&-
pass() { while [ "$1" -gt 0 ] && kill -0 $check; do set -- $(($1 - 1)); sleep 1 2>/dev/null 3>&-; done; }
{
    pass "$limit"
    kill -0 $check && echo 'kestro_run: limit' >&3
    kill -TERM $check; pass "$grace"; kill -TERM $check; pass 2; kill -KILL $check
} 3>&2 2>/dev/null >/dev/null </dev/null &
watch=$!
wait $check
status=$?
kill $watch 2>/dev/null
echo "kestro_run: status $status" >&2
exit 0
"""
GRACE = 10  # seconds that a command has to put things back
BEYOND = 20  # seconds after which a board that has not ended the command itself counts as lost
ALIVE = 5  # seconds between signs of life, of which three may be missing


def now() -> str:
    return datetime.now(timezone.utc).isoformat(timespec="milliseconds").replace("+00:00", "Z")


def ssh_words(option, alive: int) -> list[str]:
    """As the inventory and ansible.cfg say. Each command has a connection of its own: one that is shared goes on
    waiting for a board that has vanished."""
    words = [option("ssh_executable") or "ssh", "-T", "-o", "BatchMode=yes", "-o", "ControlPath=none",
             "-o", f"ServerAliveInterval={alive}", "-o", "ServerAliveCountMax=3",
             "-o", f"ConnectTimeout={option('timeout')}"]
    for name in ("ssh_args", "ssh_common_args", "ssh_extra_args"):
        words += shlex.split(option(name) or "")
    if not option("host_key_checking"):
        words += ["-o", "StrictHostKeyChecking=no", "-o", "UserKnownHostsFile=/dev/null"]
    for name, letter in (("port", "-p"), ("private_key_file", "-i"), ("remote_user", "-l")):
        if option(name):
            words += [letter, os.path.expanduser(str(option(name)))]
    return words + ["--", option("host")]


def end(process: subprocess.Popen) -> None:
    for how in (signal.SIGTERM, signal.SIGKILL):
        try:
            os.killpg(process.pid, how)
            process.wait(timeout=2)
            return
        except ProcessLookupError:
            return
        except subprocess.TimeoutExpired:
            continue


def run(words: list[str], source: Path, kept, limit: int) -> tuple[int | None, str, str]:
    """Exit status, None when the connection did not live to tell it; why it is no end of its own, if so; what ssh
    said."""
    with tempfile.TemporaryFile() as said, source.open("rb") as source_file:
        process = subprocess.Popen(words, stdin=source_file, stdout=kept, stderr=said, start_new_session=True)
        late = False
        try:
            process.wait(timeout=limit + GRACE + BEYOND)
        except subprocess.TimeoutExpired:
            late = True
        finally:
            end(process)
        said.seek(0)
        lines = said.read().decode("utf-8", "replace").splitlines()
    own = [line for line in lines if line.startswith("kestro_run: ")]
    told = " ".join(line for line in lines if line not in own).strip()
    ended = re.fullmatch(r"kestro_run: status (\d+)", own[-1]) if own else None
    over = f"the time limit of {limit} s was over"
    if ended is None:
        return None, f"the board was lost: {over}, and it ended nothing" if late else "the board was lost", told
    return int(ended[1]), over if "kestro_run: limit" in own else "", told


class ActionModule(ActionBase):
    TRANSFERS_FILES = False
    _VALID_ARGS = frozenset(("words", "limit", "keep", "stdin", "facts", "lost", "alive", "required"))

    def run(self, tmp=None, task_vars=None):
        result = super().run(tmp, task_vars)
        arguments = self._task.args
        if self._task.check_mode:
            return result | {"skipped": True, "status": None, "problem": "", "lost": "", "output": ""}
        words = arguments["words"]
        words = shlex.split(words) if isinstance(words, str) else [str(word) for word in words]
        result.update(self.carry_out(words, arguments))
        if arguments.get("required") and result["status"] != 0:
            why = result["problem"] or f"it ended with {result['status']}"
            result.update(failed=True, msg=f"'{words[0]}': {why} {result['output'].strip()}".strip())
        return result

    def carry_out(self, words: list[str], arguments: dict) -> dict:
        limit = int(arguments.get("limit", 60))
        began = now()
        begin = time.monotonic()
        with ExitStack() as stack:
            if arguments.get("keep"):
                path = Path(arguments["keep"] + ".txt")
                path.parent.mkdir(parents=True, exist_ok=True)
                kept = stack.enter_context(path.open("w+b"))
            else:
                kept = stack.enter_context(tempfile.TemporaryFile())
            if arguments.get("lost"):
                status, problem, told = None, f"not run: {arguments['lost']}", ""
            else:
                status, problem, told = run(self.ssh(arguments) + [self.on_board(words, limit)],
                                            Path(arguments.get("stdin", os.devnull)), kept, limit)
            kept.seek(0)
            output = kept.read(65536).decode("utf-8", "replace")
        problem += f" ({told})" if status is None and told else ""
        facts = {"command": shlex.join(words), "status": status, "problem": problem or None, "began": began,
                 "ended": now(), **arguments.get("facts", {})}
        if arguments.get("keep"):
            # Through JSON: what comes from a template is no plain text to YAML.
            known = json.loads(json.dumps({name: value for name, value in facts.items() if value not in (None, "")}))
            Path(arguments["keep"] + ".facts.yaml").write_text(yaml.safe_dump(known, allow_unicode=True), "utf-8")
        return {"status": status, "problem": problem, "output": output, "changed": False,
                "lost": problem if status is None else "", "seconds": round(time.monotonic() - begin, 1)}

    def ssh(self, arguments: dict) -> list[str]:
        if self._play_context.become:
            raise AnsibleActionFail("kestro_run does not become another user; docs/fleet.md tells how sudo is used")
        if not self._connection.transport == "ssh":
            raise AnsibleActionFail(f"the connection is '{self._connection.transport}'; kestro_run works over 'ssh'")
        return ssh_words(self._connection.get_option, int(arguments.get("alive", ALIVE)))

    def on_board(self, words: list[str], limit: int) -> str:
        return shlex.join(["sh", "-c", ON_BOARD, "kestro_run", str(limit), str(GRACE), *words])
