"""The formats of a report: each a writer of the events that a reading tells."""
