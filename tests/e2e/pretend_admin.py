"""Accepts a station and sends it what arrives on standard input as hexadecimal lines.

An empty line closes the connection and waits for the next one.
"""

import socket
import sys

with socket.create_server(("", int(sys.argv[1])), family=socket.AF_INET) as server:
    while True:
        connection, _ = server.accept()
        print("accepted", flush=True)
        with connection:
            for line in sys.stdin:
                if not line.strip():
                    break
                try:
                    connection.sendall(bytes.fromhex(line))
                except OSError:
                    break
            else:
                break
