"""Connects to an admin and prints each live state that it sends, one line of JSON each."""

import json
import socket
import sys

import wire

with socket.create_connection((sys.argv[1], int(sys.argv[2])), 30) as connection:
    while (payload := wire.read_frame(connection)) is not None:
        print(json.dumps(json.loads(payload)), flush=True)
