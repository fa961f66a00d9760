#!/usr/bin/env python3
"""Reads what SDL's disk audio driver recorded of the game (signed 16-bit,
44.1 kHz, stereo) and checks that the title music, once it has started,
never drops out: no 10 ms window below -60 dBFS from its start through at
least two of its loop points.

Usage: title_loop_gap.py <recording> <title announced at, s> <title length, s>
The second number is where the recording stood when the game logged that the
title music started. The sting before the title fades out to silence, so
the title starts where the last silent window around that moment ends (or at
that moment, had the title cut the sting short)."""
import array
import math
import sys

recording, announced, length = sys.argv[1], float(sys.argv[2]), float(sys.argv[3])
rate = 44100
samples = array.array("h")
with open(recording, "rb") as f:
    samples.frombytes(f.read())
if sys.byteorder != "little":
    samples.byteswap()
frames = len(samples) // 2
window = rate // 100            # 10 ms
floor = 32768 * 10 ** (-60 / 20)


def level(first):
    """RMS of the 10 ms window starting at frame `first`, both channels."""
    part = samples[2 * first:2 * (first + window)]
    return math.sqrt(sum(v * v for v in part) / max(1, len(part)))


start = int(announced * rate)
frame = max(0, int((announced - 1.5) * rate))
limit = min(frames - window, int((announced + 0.5) * rate))
while frame < limit:
    if level(frame) <= floor:
        start = frame + window
    frame += window // 4
if start + window > frames:
    sys.exit(f"title_loop_gap: the recording ends before the title starts ({frames / rate:.2f} s)")

end = start + int((2 * length + 0.5) * rate)
if end + window > frames:
    sys.exit(f"title_loop_gap: the recording ends {frames / rate:.2f} s in, before two loops of the "
             f"title ({end / rate:.2f} s)")
quietest = (float("inf"), 0)
frame = start
while frame < end:
    quietest = min(quietest, (level(frame), frame))
    frame += window // 2
db = 20 * math.log10(max(quietest[0], 1e-9) / 32768)
loops = [start + int(k * length * rate) for k in (1, 2)]
print(f"title_loop_gap: title from {start / rate:.2f} s, loop points at "
      f"{', '.join(f'{p / rate:.2f} s' for p in loops)}; quietest 10 ms: {db:.1f} dBFS "
      f"at {quietest[1] / rate:.2f} s")
if db < -60:
    sys.exit(f"title_loop_gap: the title drops out at {quietest[1] / rate:.2f} s ({db:.1f} dBFS)")
