"""HTTP servers on loopback that behave well or badly."""

import contextlib
import socket
import threading
import time

PATIENCE = 120  # Seconds after which a connection is abandoned.


def http(body=b"{}", status="200 OK", headers="", connection="close"):
    return (f"HTTP/1.1 {status}\r\nContent-Length: {len(body)}\r\nConnection: {connection}\r\n"
            f"{headers}\r\n").encode() + body


def request_from(connection):
    """A complete request, or None if the client hangs up."""
    received = b""
    while b"\r\n\r\n" not in received:
        part = connection.recv(65536)
        if not part:
            return None
        received += part
    head, _, body = received.partition(b"\r\n\r\n")
    length = 0
    for line in head.lower().split(b"\r\n"):
        if line.startswith(b"content-length:"):
            length = int(line.split(b":")[1])
    while len(body) < length:
        part = connection.recv(65536)
        if not part:
            return None
        body += part
    return head + b"\r\n\r\n" + body


def trickle(connection, data, pause):
    for index in range(len(data)):
        connection.sendall(data[index:index + 1])
        time.sleep(pause)


class Server:
    """Calls `behave(connection, request)` for each request; a true result keeps the connection."""

    def __init__(self, behave):
        self.behave, self.requests = behave, []
        self.listener = socket.create_server(("127.0.0.1", 0), backlog=64)
        self.address = "http://127.0.0.1:%d" % self.listener.getsockname()[1]
        threading.Thread(target=self._accept, daemon=True).start()

    def _accept(self):
        with contextlib.suppress(OSError):
            while True:
                connection, _ = self.listener.accept()
                connection.settimeout(PATIENCE)
                threading.Thread(target=self._serve, args=(connection,), daemon=True).start()

    def _serve(self, connection):
        with connection, contextlib.suppress(OSError):
            while (request := request_from(connection)) is not None:
                self.requests.append(request)
                if not self.behave(connection, request):
                    return

    def __enter__(self):
        return self

    def __exit__(self, *_):
        # Otherwise, the thread would keep accepting on the closed socket.
        with contextlib.suppress(OSError):
            self.listener.shutdown(socket.SHUT_RDWR)
        self.listener.close()


def answering(*answers):
    """A server that sends these responses in turn and repeats the last one."""
    served = []

    def behave(connection, _request):
        served.append(None)
        connection.sendall(answers[min(len(served), len(answers)) - 1])
    return Server(behave)


def silent():
    """Accepts connections and stays silent until the client gives up."""
    return Server(lambda connection, _request: connection.recv(1))
