"""What is wrong with the input or the tool itself; such an error ends it with status 2 and one line."""


class InputError(Exception):
    """The text names the file, the line, what is wrong and what would be right."""
