"""Connects many stations that draw nothing to an admin, and reads all that it sends to them.

With "--flood" each also sends to the admin without end; with "--stall" none reads.
"""

import selectors
import socket
import sys

address, port, count = sys.argv[1], int(sys.argv[2]), int(sys.argv[3])
events = 0 if "--stall" in sys.argv else selectors.EVENT_READ
if "--flood" in sys.argv:
    events |= selectors.EVENT_WRITE

with selectors.DefaultSelector() as selector:
    stations = []
    for _ in range(count):
        station = socket.create_connection((address, port), 30)
        station.setblocking(False)
        stations.append(station)
        if events:
            selector.register(station, events)
    print("connected", flush=True)
    while events:
        for key, ready in selector.select():
            if ready & selectors.EVENT_READ and not key.fileobj.recv(1 << 20):
                sys.exit()
            if ready & selectors.EVENT_WRITE:
                try:
                    key.fileobj.send(bytes(1 << 16))
                except BlockingIOError:
                    pass
    sys.stdin.read()
