#!/usr/bin/env python3
"""Writes orvelkit.icns from the drawing of the icon. To be run when that changes; the result is
kept, since a Mac has nothing that draws it. Wants rsvg-convert."""

import pathlib
import struct
import subprocess

HERE = pathlib.Path(__file__).resolve().parent
DRAWING = HERE.parent / "linux/orvel.svg"
# The type of each picture in the file and its pixels; those that share pixels differ in scale.
PICTURES = {"icp4": 16, "icp5": 32, "ic11": 32, "ic12": 64, "ic07": 128, "ic13": 256, "ic08": 256,
            "ic14": 512, "ic09": 512, "ic10": 1024}


def picture(pixels):
    return subprocess.run(["rsvg-convert", "-w", str(pixels), "-h", str(pixels), DRAWING],
                          capture_output=True, check=True).stdout


def entry(kind, contents):
    return kind.encode() + struct.pack(">I", 8 + len(contents)) + contents


def main():
    pictures = b"".join(entry(kind, picture(pixels)) for kind, pixels in PICTURES.items())
    (HERE / "orvelkit.icns").write_bytes(entry("icns", pictures))


if __name__ == "__main__":
    main()
