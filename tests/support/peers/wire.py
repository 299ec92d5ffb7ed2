"""One server: it takes requests off the wire byte by byte and puts answers on it, well or badly.

A fault is a dictionary; every key is optional:
  status, body              what is answered instead; "{pin}" in a body is the PIN just given
  headers                   fields more, an object
  raw                       the whole answer instead, header and body as they are
  early                     answers as soon as the header is there, and reads on afterwards
  read_rate, rate           bytes a second that are read, or sent
  close_request_after       closes once so many bytes of the request have been read
  close_after               closes once so many bytes of the answer have been sent
  reset                     closing is a reset
  silent                    reads the request and never answers
  endless                   "header", "line" or "body": no end of it
  header_size               so many bytes of header fields more
  content_length            what the answer says its length is
  split                     sends the body in chunks, cut at these places, each on its own
  keep                      leaves the connection open after the answer
  certificate               of a whole service (path "*"): wrong, expired, foreign, old
"""
import dataclasses
import socket
import struct
import threading
import time

BLOCK = 64 * 1024
LARGEST_HEAD = 256 * 1024
LARGEST_BODY = 64 * 1024 * 1024
PATIENCE_S = 60


@dataclasses.dataclass
class Request:
    service: str
    head: bytes = b""  # to the empty line, which it includes
    body: bytes = b""
    method: str = ""
    target: str = ""
    fields: list = dataclasses.field(default_factory=list)
    is_complete: bool = False
    remarks: dict = dataclasses.field(default_factory=dict)  # what the service made of it

    def parse_head(self):
        first, *lines = self.head.decode("latin-1").rstrip("\r\n").split("\r\n")
        self.method, self.target, _ = (first.split(" ") + ["", ""])[:3]
        self.fields = [tuple(line.partition(":")[::2]) for line in lines]

    def field(self, name):
        for key, value in self.fields:
            if key.lower() == name.lower():
                return value.strip()
        return ""

    @property
    def path(self):
        return self.target.partition("?")[0]


@dataclasses.dataclass
class Answer:
    status: int = 200
    body: bytes = b""
    type: str = "text/html; charset=utf-8"
    headers: list = dataclasses.field(default_factory=list)


class Gone(Exception):
    """The connection is at its end, as it should be or not."""


class Connection:
    """The bytes of one connection, as slow and as few as a fault wants them."""

    def __init__(self, stream, fault):
        self.stream = stream
        self.fault = fault
        self.taken = 0
        self.sent = 0

    def read(self, most):
        limit = self.fault.get("close_request_after")
        if limit is not None:
            most = min(most, limit - self.taken)
            if most <= 0:
                raise Gone
        rate = self.fault.get("read_rate")
        if rate:
            most = min(most, max(1, rate // 20))
            time.sleep(most / rate)
        part = self.stream.recv(min(most, BLOCK))
        if not part:
            raise Gone
        self.taken += len(part)
        return part

    def write(self, part):
        limit = self.fault.get("close_after")
        rate = self.fault.get("rate")
        step = max(1, rate // 20) if rate else BLOCK
        for start in range(0, len(part), step):
            piece = part[start:start + step]
            if limit is not None:
                piece = piece[:limit - self.sent]
            self.stream.sendall(piece)
            self.sent += len(piece)
            if limit is not None and self.sent >= limit:
                raise Gone
            if rate:
                time.sleep(len(piece) / rate)

    def finish(self):
        """Lets the other side read to the end; a close with bytes unread would be a reset."""
        self.stream.settimeout(2)
        try:
            self.stream.shutdown(socket.SHUT_WR)
            while self.stream.recv(BLOCK):
                pass
        except OSError:
            pass


def read_head(connection, request):
    while b"\r\n\r\n" not in request.head:
        if len(request.head) > LARGEST_HEAD:
            raise Gone
        request.head += connection.read(256)  # leaving the body to its own rate
    request.head, _, request.body = request.head.partition(b"\r\n\r\n")
    request.head += b"\r\n\r\n"
    request.parse_head()


def read_body(connection, request):
    if connection.taken >= connection.fault.get("close_request_after", connection.taken + 1):
        raise Gone
    length = request.field("Content-Length") or "0"
    if not length.isascii() or not length.isdigit() or int(length) > LARGEST_BODY:
        return
    parts = [request.body]
    left = int(length) - len(request.body)
    try:
        while left > 0:
            parts.append(connection.read(left))
            left -= len(parts[-1])
        request.is_complete = left == 0
    finally:
        request.body = b"".join(parts)


def write_endlessly(connection, kind):
    connection.write(b"HTTP/1.1 200 OK\r\n")
    if kind == "line":
        connection.write(b"X-Long: ")
    if kind == "body":
        connection.write(b"Content-Type: text/html\r\n\r\n")
    piece = b"X-More: " + b"x" * 1000 + b"\r\n" if kind == "header" else b"x" * BLOCK
    while True:
        connection.write(piece)


def compose_head(answer, fault):
    lines = [f"HTTP/1.1 {answer.status} Answer", f"Content-Type: {answer.type}"]
    lines += [f"{name}: {value}" for name, value in answer.headers]
    lines += [f"{name}: {value}" for name, value in fault.get("headers", {}).items()]
    if "split" in fault:
        lines.append("Transfer-Encoding: chunked")
    else:
        lines.append(f"Content-Length: {fault.get('content_length', len(answer.body))}")
    if not fault.get("keep"):
        lines.append("Connection: close")
    for start in range(0, fault.get("header_size", 0), 1000):
        lines.append(f"X-Large-{start}: " + "x" * 1000)
    return ("\r\n".join(lines) + "\r\n\r\n").encode("latin-1")


def write_answer(connection, answer, fault):
    if "raw" in fault:
        return connection.write(fault["raw"].encode("latin-1"))
    if "endless" in fault:
        return write_endlessly(connection, fault["endless"])
    connection.write(compose_head(answer, fault))
    if "split" not in fault:
        return connection.write(answer.body)
    ends = sorted(fault["split"]) + [len(answer.body)]
    for start, end in zip([0] + ends, ends):
        if end > start:
            connection.write(b"%x\r\n%s\r\n" % (end - start, answer.body[start:end]))
            time.sleep(0.15)  # so that it arrives by itself
    return connection.write(b"0\r\n\r\n")


class Server:
    """Listens on loopback until the process ends; `handle` makes an Answer of a Request."""

    def __init__(self, name, handle, record, faults, contexts=None):
        self.name, self.handle, self.record, self.faults = name, handle, record, faults
        self.contexts = contexts
        self.listener = socket.create_server(("127.0.0.1", 0), backlog=64)
        # Small, so that a body that is read slowly is sent slowly.
        self.listener.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, BLOCK)
        self.port = self.listener.getsockname()[1]
        threading.Thread(target=self._accept, daemon=True).start()

    def _accept(self):
        while True:
            stream, _ = self.listener.accept()
            threading.Thread(target=self._serve, args=[stream], daemon=True).start()

    def _serve(self, plain):
        plain.settimeout(PATIENCE_S)
        plain.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        stream = plain
        try:
            if self.contexts:
                kind = self.faults.of_service(self.name).get("certificate", "good")
                stream = self.contexts[kind].wrap_socket(plain, server_side=True)
            self._answer(stream)
        except (OSError, ValueError):  # the other side's trouble is what tests are about
            pass
        finally:
            stream.close()

    def _answer(self, stream):
        connection = Connection(stream, dict(self.faults.of_service(self.name)))
        request = Request(self.name)
        fault = connection.fault
        try:
            self._exchange(connection, request)
            if not fault.get("keep"):
                connection.finish()
        except (Gone, OSError):
            pass
        fault = connection.fault
        if fault.get("keep"):
            time.sleep(PATIENCE_S)
        if fault.get("reset"):
            stream.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))

    def _exchange(self, connection, request):
        try:
            read_head(connection, request)
            connection.fault |= self.faults.take(self.name, request.path)
            fault = connection.fault
            if fault.get("early"):
                write_answer(connection, self._make_answer(request, fault), fault)
            read_body(connection, request)
        finally:
            self.record(request)
        if fault.get("early"):
            return
        answer = self._make_answer(request, fault)
        if fault.get("silent"):
            time.sleep(PATIENCE_S)
        write_answer(connection, answer, fault)

    def _make_answer(self, request, fault):
        if fault.get("early") or fault.get("status", 200) >= 400:
            answer = Answer()  # nothing is looked at
        elif not request.is_complete:
            answer = Answer(400, b"What is the length of this?")
        else:
            answer = self.handle(request)
        answer.status = fault.get("status", 200 if "body" in fault else answer.status)
        if "body" in fault:
            pin = request.remarks.get("pin", "")
            answer.body = fault["body"].replace("{pin}", pin).encode("utf-8", "surrogateescape")
        return answer
