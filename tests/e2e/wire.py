"""The network's messages as another program would write them.

A message is the length of its payload as four bytes, most significant first, then the payload:
the JSON of a live state.
"""

import json
import struct


def frame(payload):
    return struct.pack(">I", len(payload)) + payload


def live_state(show, index=0, started_at=0.0):
    return json.dumps({"show": show, "activeSongIndex": index,
                       "currentSongStartedAt": started_at}).encode()
