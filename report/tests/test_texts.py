"""From bytes to lines: how they are parted, what is taken off them."""

import tracemalloc
from collections.abc import Iterator

import pytest

from kestro_report.texts import CHUNK, LINE_ENDS, LONGEST, TextLine, text_lines
from outputs_for_tests import in_pieces

MIB = 1 << 20


def lines_of(data: bytes, size: int = CHUNK) -> list[tuple[int, str, bool]]:
    return [(line.number, line.text, line.whole) for line in text_lines(in_pieces(data, size))]


def texts_of(data: bytes) -> list[str]:
    return [text for _, text, _ in lines_of(data)]


# --- line ends --------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("size", [1, 2, 3, 5, CHUNK])
@pytest.mark.parametrize(("data", "lines"), [
    (b"a\r\r\rb\n", [(1, "a", True), (4, "b", True)]), (b"a\r\r\r\nb\n", [(1, "a", True), (2, "b", True)]),
    (b"\r\r\ra\n", [(4, "a", True)]), (b"a\r\n\r\r\rb\r\r", [(1, "a", True), (5, "b", False)]),
    (b"a\n\rb\r\r\n\n\rc", [(1, "a", True), (3, "b", True), (6, "c", False)]), (b"\r\r\r", []),
    (b"a\r", [(1, "a", False)])])
def test_carriage_returns_count_wherever_the_pieces_part_them(data: bytes, size: int, lines: list):
    assert lines_of(data, size) == lines


def read_in_pieces(pieces: Iterator[bytes]) -> tuple[list[TextLine], int]:
    """The lines, and how many bytes the reading took at most."""
    tracemalloc.start()
    try:
        lines = list(text_lines(lambda size: next(pieces, b"")))
        return lines, tracemalloc.get_traced_memory()[1]
    finally:
        tracemalloc.stop()


def test_a_line_end_is_looked_for_at_the_first_of_many_returns_only():
    """From each of them the search would go through all that follow it."""
    assert LINE_ENDS.match(b"\r\r\r\n").end() == 4
    assert [LINE_ENDS.match(b"\r\r\r\n", at) for at in (1, 2)] == [None, None]


def test_carriage_returns_take_no_memory():
    lines, peak = read_in_pieces(iter([b"\r" * CHUNK] * 128 + [b"\nx\n"]))
    assert [(line.number, line.text) for line in lines] == [(2, "x")]
    assert peak < 2 * MIB


# --- what is said to the terminal -------------------------------------------------------------------------------------

SEQUENCES = [b"\x1b(B", b"\x1b)0", b"\x1b*A", b"\x1b+B", b"\x1b-A", b"\x1b.A", b"\x1b/A", b"\x1b]0;a board; 1\x07",
             b"\x1b]8;;file:///tmp\x1b\\", b"\x1b]\x07", b"\x1b7", b"\x1b8", b"\x1b=", b"\x1b>", b"\x1bc", b"\x1bM",
             b"\x1b\\", b"\x0e", b"\x0f", b"\x1b[0;1m", b"\x1b(B\x1b[m\x0f"]


@pytest.mark.parametrize("sequence", SEQUENCES)
def test_sequences_of_terminals_are_taken_off(sequence: bytes):
    text = "Error: ä voltage [3] get fail."
    data = sequence.join(text[at:at + 1].encode() for at in range(len(text))) + b"\n"
    assert texts_of(sequence + data) == [text]
    assert texts_of(sequence + b"\nnext\n" + sequence) == ["next"], "a line of nothing else is an empty one"


@pytest.mark.parametrize(("data", "texts"), [
    (b"\x1b]0;title\nError: fail\n\x07\n", ["0;title", "Error: fail", "\x07"]),
    (b"\x1b]0;Error: fail", ["0;Error: fail"]), (b"\x1b]0;Error: fail\x1b[0m gone\x07\n", ["0;Error: fail gone\x07"]),
    (b"\x1b]0;one\x1b]0;two\x07 three\n", ["0;one three"]), (b"\x1b(\nError\n", ["\x1b(", "Error"]),
    (b"\x1b\n", ["\x1b"])])
def test_a_sequence_that_does_not_end_hides_nothing(data: bytes, texts: list[str]):
    assert texts_of(data) == texts


def test_a_title_without_an_end_is_cut_as_every_line():
    data = b"\x1b]0;" + b"x" * (3 * LONGEST) + b"\x07\nnext\n"
    assert lines_of(data) == [(1, "0;" + "x" * (LONGEST - 4), False), (2, "next", True)]


def endless(noise: bytes) -> Iterator[bytes]:
    piece = noise * (CHUNK // len(noise))
    yield from [piece] * 256


@pytest.mark.parametrize("noise", [b"\x1b]0;x", b"\x1b]", b"\x1b[0", b"\x1b(", b"\x1b"])
def test_sequences_that_never_end_take_no_memory(noise: bytes):
    lines, peak = read_in_pieces(endless(noise))
    assert len(lines) <= 1 and not any(line.whole for line in lines)
    assert peak < 8 * MIB
