#!/usr/bin/env python3
"""A one-answer update server for the driven checks, on 127.0.0.1 only.

update-server.py BODY PORT_FILE REQUEST_FILE
Listens at a port the system picks (written to PORT_FILE), takes one connection,
keeps the request's bytes in REQUEST_FILE, answers BODY over HTTP and closes.
"""
import socket
import sys

body, port_file, request_file = sys.argv[1].encode(), sys.argv[2], sys.argv[3]
with socket.socket(socket.AF_INET, socket.SOCK_STREAM) as server:
    server.bind(("127.0.0.1", 0))
    server.listen(1)
    server.settimeout(120)
    with open(port_file, "w") as f:
        f.write(str(server.getsockname()[1]))
    client, _ = server.accept()
    with client:
        client.settimeout(10)
        request = b""
        while b"\r\n\r\n" not in request:
            part = client.recv(4096)
            if not part:
                break
            request += part
        with open(request_file, "wb") as f:
            f.write(request)
        client.sendall(b"HTTP/1.1 200 OK\r\nContent-Length: %d\r\nConnection: close\r\n\r\n" % len(body) + body)
