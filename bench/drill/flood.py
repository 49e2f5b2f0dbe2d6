"""Connects to an address as often as it is told to and sends bytes on each connection, for a while.

    flood.py ADDRESS PORT CONNECTIONS SECONDS
"""

import resource
import selectors
import socket
import sys
import time

address, port = sys.argv[1], int(sys.argv[2])
count, seconds = int(sys.argv[3]), float(sys.argv[4])
resource.setrlimit(resource.RLIMIT_NOFILE, (count + 64, count + 64))
deadline = time.monotonic() + seconds
with selectors.DefaultSelector() as selector:
    for _ in range(count):
        caller = socket.socket(socket.AF_INET)
        caller.setblocking(False)
        caller.connect_ex((address, port))
        selector.register(caller, selectors.EVENT_WRITE)
    while time.monotonic() < deadline:
        for key, _ in selector.select(0.1):
            try:
                key.fileobj.send(bytes(1 << 12))
            except BlockingIOError:
                pass
            except OSError:  # closed by the other side
                selector.unregister(key.fileobj)
                key.fileobj.close()
