"""How much memory a process of this machine holds."""


def process_memory(proc):
    """Bytes: resident, its proportional share of what is shared, and what it wrote itself.

    proc is the path of its folder in /proc.
    """
    sizes = {}
    for line in proc.joinpath("smaps_rollup").read_text().splitlines()[1:]:
        name, size = line.split()[:2]
        sizes[name.rstrip(":")] = int(size) * 1024
    return {"resident": sizes["Rss"], "proportional": sizes["Pss"], "own": sizes["Private_Dirty"]}
