"""The parts of a test that prints their banners in one order: which may still come, and what is wrong with one that
comes."""

from kestro_report.grammar import Grammar, Order, Rule


class Parts:
    """Of one run, where its test has an order at all."""

    def __init__(self, grammar: Grammar) -> None:
        self.orders = grammar.orders.values()
        self.due: list[tuple[str, ...]] = []  # what may still come, for each branch
        self.is_begun = False
        self.is_told = False  # that the beginning is missing

    def first_of(self, rule: Rule, name: str) -> Order | None:
        """The order that the part begins."""
        return next((order for order in self.of_banner(rule) if name == order.sections[0]), None)

    def of_banner(self, rule: Rule) -> list[Order]:
        return [order for order in self.orders if order.banner == rule.source_text.rstrip()]

    def begin(self, order: Order) -> None:
        self.due = [order.sections[1:] + branch for branch in order.branches]
        self.is_begun = True

    def go_on(self, rule: Rule, name: str) -> str:
        """What is wrong with the part, or nothing."""
        if not self.of_banner(rule):
            return ""
        if not self.due:
            return self.without_beginning(name)
        going_on = [rest[1:] for rest in self.due if rest and rest[0] == name]
        if going_on:
            self.due = going_on
            return ""
        due = " or ".join(f"'{rest[0]}'" for rest in dict.fromkeys(rest[:1] for rest in self.due if rest))
        later = [rest[rest.index(name) + 1:] for rest in self.due if name in rest]
        self.due = later or self.due
        return (f"the part '{name}' comes where {due or 'the end'} was due: a part is missing, or two runs are mixed in "
                "one log")

    def without_beginning(self, name: str) -> str:
        """Parts of a test that has an order never run alone: what is seen of them is the rest of a whole. Said once."""
        for order in self.orders:
            if not self.is_told and any(name in part for part in (order.sections, *order.branches)):
                self.is_told = True
                return (f"the part '{name}' comes without '{order.sections[0]}', which begins the test: the beginning is "
                        "missing")
        return ""

    def missing(self) -> str:
        """At the end of the run."""
        return self.due[0][0] if any(self.due) and () not in self.due else ""
