"""What is wrong with the input or the tool itself; such an error ends it with status 2 and one line."""

from pathlib import Path

# No file with limits and no description is longer; what is, is none, and would only take memory.
LONGEST = 8 << 20


class InputError(Exception):
    """The text names the file, the line, what is wrong and what would be right."""


def read_text_file(file: Path, wanted: str) -> bytes:
    try:
        with file.open("rb") as stream:
            data = stream.read(LONGEST + 1)
    except OSError as error:
        raise InputError(f"{file}: {error.strerror}; {wanted} is wanted") from error
    if len(data) > LONGEST:
        raise InputError(f"{file}: longer than {LONGEST >> 20} MiB; {wanted} is wanted")
    return data
