"""What a job is, and the list of all of them."""
import dataclasses


@dataclasses.dataclass
class Job:
    """One kind of work at one size. The first program is ours, and all ratios are to it; `items` is how many records or
    operations one turn handles."""

    name: str
    group: str
    items: int
    programs: list


@dataclasses.dataclass
class Setting:
    """What the lists of jobs are made for."""

    wine: object
    orders: object
    quick: bool
    display: str = ""

    @property
    def records(self):
        return self.orders.records

    def turns(self, for_a_million, most):
        """More turns for less data, so that the work outweighs the clock's steps and the start of the program."""
        if self.quick:
            most = max(1, most // 2)
        return min(most, max(1, round(for_a_million * 1_000_000 / self.records)))


ALIASES = {
    "write": ["add", "update", "delete", "pack", "index"],
    "text": ["export", "import"],
}
