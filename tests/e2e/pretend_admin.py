"""Accepts one station and sends it what arrives on standard input as hexadecimal lines."""

import socket
import sys

with socket.create_server(("", int(sys.argv[1])), family=socket.AF_INET) as server:
    connection, _ = server.accept()
    for line in sys.stdin:
        connection.sendall(bytes.fromhex(line))
