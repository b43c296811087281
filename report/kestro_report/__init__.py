"""Verdicts and reports from what kestro_test prints."""

VERSION = "1.0"
