#!/usr/bin/env python3
"""Identifies every font under a folder with Dask, one task per batch of files.

    python3 dask_identify.py FOLDER [--scheduler tcp://host:8786] [--batch 64]

Without --scheduler it starts a LocalCluster; with one the same code runs on
a remote cluster, whose workers need the typeprobe package, its library and
the files at the same paths. Prints the faces as one table and the
conflicting releases: faces that share a PostScript name (letter case
aside) under different identity checksums, as `typeprobe duplicates` does.
"""

from __future__ import annotations

import argparse
import os
import sys
from typing import Dict, List, Optional, Sequence, Tuple

import pandas as pd
from dask.distributed import Client, LocalCluster

_SIDECAR_FOLDERS = {".AppleDouble", "__MACOSX"}


def font_files(root: str) -> List[str]:
    """Every file under root in name order, Mac sidecars left out."""
    found: List[str] = []
    for folder, subfolders, names in os.walk(root):
        subfolders[:] = sorted(d for d in subfolders if d not in _SIDECAR_FOLDERS)
        found.extend(os.path.join(folder, name) for name in sorted(names)
                     if not (name.startswith("._") and len(name) > 2))
    return found


def identify_batch(paths: Sequence[str]) -> Tuple[List[dict], List[Tuple[str, str]]]:
    """One task: the faces of a batch of files as rows, and the files that
    could not be read. Files that are not fonts are skipped."""
    import typeprobe  # imported on the worker, which loads its own library

    rows: List[dict] = []
    errors: List[Tuple[str, str]] = []
    for path in paths:
        try:
            rows.extend(face.to_json() for face in typeprobe.identify(path))
        except typeprobe.NotAFontError:
            continue
        except OSError as error:
            errors.append((path, error.strerror or str(error)))
    return rows, errors


def conflicts(table: pd.DataFrame) -> Dict[str, List[str]]:
    """PostScript names (as first met) with the checksums of their releases,
    in order of appearance, for names seen under more than one checksum."""
    if table.empty:
        return {}
    named = table[table["postScriptName"].fillna("") != ""]
    groups: Dict[str, List[str]] = {}
    for _, faces in named.groupby(named["postScriptName"].str.lower(), sort=False):
        releases = list(dict.fromkeys(faces["checksum"]))
        if len(releases) > 1:
            groups[faces["postScriptName"].iloc[0]] = releases
    return groups


def identify_tree(root: str, client: Client, batch: int = 64
                  ) -> Tuple[pd.DataFrame, Dict[str, List[str]], List[Tuple[str, str]]]:
    """The faces under root as one table, the conflicting releases, the errors."""
    files = font_files(root)
    batches = [files[i:i + batch] for i in range(0, len(files), batch)]
    results = client.gather(client.map(identify_batch, batches, pure=False))
    rows = [row for batch_rows, _ in results for row in batch_rows]
    errors = [error for _, batch_errors in results for error in batch_errors]
    table = pd.DataFrame(rows)
    return table, conflicts(table), errors


def main(argv: Optional[Sequence[str]] = None) -> int:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("folder")
    parser.add_argument("--scheduler", help="address of a running scheduler")
    parser.add_argument("--batch", type=int, default=64, help="files per task")
    parser.add_argument("--workers", type=int, default=2, help="local workers")
    parser.add_argument("--threads", action="store_true",
                        help="local workers as threads of this process")
    options = parser.parse_args(argv)
    if options.scheduler:
        client = Client(options.scheduler)
    else:
        cluster = LocalCluster(n_workers=options.workers, threads_per_worker=1,
                               processes=not options.threads, dashboard_address=None)
        client = Client(cluster)
    with client:
        table, groups, errors = identify_tree(options.folder, client, options.batch)
    with pd.option_context("display.max_rows", None, "display.width", 200):
        columns = [c for c in ("path", "index", "postScriptName", "kind", "version", "checksum")
                   if c in table]
        print(table[columns].to_string(index=False) if columns else "no faces")
    for name, releases in groups.items():
        print(f"conflicting releases of {name}: {', '.join(releases)}")
    for path, message in errors:
        print(f"{path}: {message}", file=sys.stderr)
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
