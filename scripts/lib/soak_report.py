"""The result of a soak: every due moment must run exactly once, and nothing may grow on and on."""

import statistics
from datetime import timedelta

WARM_UP_MINUTES = 10
# Caches, worker threads of the system and its heap vary by this much. A leak at each run or menu is
# far more after half an hour.
LIMITS = {"files": 4, "kernel": 4, "gdi": 4, "windows": 0, "threads": 2, "memory": 768}
UNITS = {"memory": "own memory, KB", "files": "open files", "kernel": "kernel handles",
         "gdi": "GDI objects", "windows": "windows", "threads": "threads"}
# A task starts within about a second of its moment; a busy machine is given some more.
LATEST = timedelta(seconds=10)


class Growth:
    """The growth of a figure after the warm-up: between the medians of the first and of the last third
    of its samples, so that a single sample decides nothing."""

    def __init__(self, name, samples):
        warm = samples[min(WARM_UP_MINUTES, len(samples) // 3):]
        third = max(len(warm) // 3, 1)
        self.name = name
        self.before = statistics.median(warm[:third])
        self.after = statistics.median(warm[-third:])
        self.growth = self.after - self.before
        self.is_good = self.growth <= LIMITS[name]

    def line(self):
        return (f"{UNITS[self.name]:<18}{self.before:>12g}{self.after:>12g}{self.growth:>+8g}"
                f"{LIMITS[self.name]:>8}  {'ok' if self.is_good else 'GROWN'}")


class Runs:
    """The moments at which a task ran, beside those at which it was due."""

    def __init__(self, name, first_due, end, moments, every=timedelta(minutes=1)):
        self.name = name
        self.due = (end - first_due) // every + 1 if end >= first_due else 0
        counts = [0] * self.due
        self.undue = 0
        self.late = timedelta()
        for moment in moments:
            # It belongs to the latest due moment before it.
            number = (moment - first_due) // every
            if 0 <= number < self.due:
                counts[number] += 1
                self.late = max(self.late, moment - first_due - number * every)
            else:
                self.undue += 1
        self.missed = counts.count(0)
        self.doubled = sum(count - 1 for count in counts if count > 1)
        self.is_good = not (self.missed or self.doubled or self.undue) and self.late <= LATEST

    def line(self):
        return (f"{self.name:<18}{self.due:>6}{self.missed:>8}{self.doubled:>9}{self.undue:>7}"
                f"{self.late.total_seconds():>7.1f} s  {'ok' if self.is_good else 'WRONG'}")


class Count:
    """How often something happened, and how often it had to."""

    def __init__(self, name, wanted, seen):
        self.name, self.wanted, self.seen = name, wanted, seen
        self.is_good = seen == wanted

    def line(self):
        return f"{self.name:<18}{self.wanted:>6} times, seen {self.seen:>6}" \
               f"{'ok' if self.is_good else 'WRONG':>24}"


def print_report(samples, outcomes):
    """Prints the growth and the runs; true when all passed."""
    growths = [Growth(name, [sample[name] for sample in samples]) for name in UNITS]
    outcomes = list(outcomes)
    print(f"\n{'':<18}{'when warm':>12}{'at the end':>12}{'growth':>8}{'limit':>8}")
    for growth in growths:
        print(growth.line())
    print(f"\n{'task':<18}{'due':>6}{'missed':>8}{'doubled':>9}{'undue':>7}{'latest':>9}")
    for outcome in outcomes:
        print(outcome.line())
    return all(judged.is_good for judged in [*growths, *outcomes])
