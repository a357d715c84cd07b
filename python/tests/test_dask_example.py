"""The Dask example on the test fonts, with the workers as threads."""

import json
import runpy

from conftest import REPOSITORY, run_tool


def test_dask_example_finds_the_faces_and_the_conflicting_releases():
    from dask.distributed import Client, LocalCluster

    example = runpy.run_path(str(REPOSITORY / "python/examples/dask_identify.py"))
    with LocalCluster(n_workers=2, threads_per_worker=1, processes=False,
                      dashboard_address=None) as cluster, Client(cluster) as client:
        table, conflicts, errors = example["identify_tree"]("tests/data/mac", client, batch=3)
    lines = run_tool("identify", "-q", "-f", "jsonl", "tests/data/mac").stdout.splitlines()
    assert table.to_dict("records") == [json.loads(line) for line in lines]
    tool = json.loads(run_tool("duplicates", "-f", "json", "tests/data/mac").stdout)
    assert conflicts == {c["postScriptName"]: [r["checksum"] for r in c["releases"]]
                         for c in tool["conflicts"]}
    assert errors == []
