"""The memory of a process on this machine."""


def process_memory(proc):
    """Bytes: resident, with its share of shared pages, and written by the process itself.

    proc is the path of its folder in /proc.
    """
    sizes = {}
    for line in proc.joinpath("smaps_rollup").read_text().splitlines()[1:]:
        name, size = line.split()[:2]
        sizes[name.rstrip(":")] = int(size) * 1024
    return {"resident": sizes["Rss"], "proportional": sizes["Pss"], "own": sizes["Private_Dirty"]}
