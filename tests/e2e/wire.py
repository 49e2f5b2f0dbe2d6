"""The network's bytes as another program would write and read them.

A message is the length of its payload as four bytes, most significant first, then the payload:
the JSON of a live state.
"""

import json
import struct


def frame(payload):
    return struct.pack(">I", len(payload)) + payload


def read_frame(connection):
    """The next payload, or None when the peer has closed."""
    header = _read(connection, 4)
    return header and _read(connection, struct.unpack(">I", header)[0])


def live_state(show, index=0, started_at=0.0):
    return json.dumps({"show": show, "activeSongIndex": index,
                       "currentSongStartedAt": started_at}).encode()


def _read(connection, count):
    received = b""
    while len(received) < count:
        piece = connection.recv(count - len(received))
        if not piece:
            return None
        received += piece
    return received
