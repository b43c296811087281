"""The package under test is the one that lies beside the tests."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent))
sys.path.insert(0, str(Path(__file__).resolve().parent))

import functools  # noqa: E402

import pytest  # noqa: E402

from kestro_report import grammar  # noqa: E402


@pytest.fixture(autouse=True, scope="session")
def grammar_is_read_once():
    """A start of the tool reads it once as well, and these tests are hundreds of starts."""
    grammar.load = functools.cache(grammar.load)
