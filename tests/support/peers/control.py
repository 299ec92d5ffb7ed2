"""What tests say to the servers and ask of them, over plain HTTP on loopback.

POST / with an object, whose keys are all optional and are looked at in this order:
  clear      true: no faults, nothing received, 30 results, nothing hostile
  fault      a fault of wire.py with, besides, "service", "path" ("*": all of the service's), and
             "times": for so many requests only
  results    how many the search finds
  hostile    whether some of them would do harm
  accept     {"oauth_token", "oauth_secret"} or {"access_token"}: as if they had been issued
GET /received answers what has arrived at all services but this one, in the order of arrival, as a
list of objects; texts of bytes are Latin-1, long bodies are left out. GET /content/N answers the
file of the upload with that place in the list.
"""
import hashlib
import http.server
import json
import threading

LONGEST_BODY = 64 * 1024


class Faults:
    """What is to go wrong, by service and path."""

    def __init__(self):
        self.lock = threading.Lock()
        self.by_place = {}

    def clear(self):
        with self.lock:
            self.by_place.clear()

    def set(self, fault):
        with self.lock:
            self.by_place[fault.pop("service"), fault.pop("path")] = fault

    def of_service(self, service):
        with self.lock:
            return dict(self.by_place.get((service, "*"), {}))

    def take(self, service, path):
        """The fault of one request more."""
        with self.lock:
            fault = self.by_place.get((service, path))
            if fault is None:
                return {}
            if "times" in fault:
                fault["times"] -= 1
                if fault["times"] <= 0:
                    del self.by_place[service, path]
            return dict(fault)


class Received:
    """Every request, whole or not."""

    def __init__(self):
        self.lock = threading.Lock()
        self.requests = []

    def add(self, request):
        if not request.head and not request.body:
            return  # somebody has connected and thought better of it
        with self.lock:
            self.requests.append(request)

    def clear(self):
        with self.lock:
            self.requests.clear()

    def content(self, place):
        with self.lock:
            return self.requests[place].remarks["content"]

    def describe(self):
        with self.lock:
            return [self._describe(request) for request in self.requests]

    @staticmethod
    def _describe(request):
        remarks = {key: value for key, value in request.remarks.items() if key != "content"}
        body = request.body.decode("latin-1") if len(request.body) <= LONGEST_BODY else None
        return {"service": request.service, "method": request.method, "target": request.target,
                "head": request.head.decode("latin-1"), "body": body, "size": len(request.body),
                "sha256": hashlib.sha256(request.body).hexdigest(),
                "complete": request.is_complete, **remarks}


def serve_control(peers):
    """Starts listening; returns the port."""

    class Handler(http.server.BaseHTTPRequestHandler):
        def log_message(self, *_):
            pass

        def do_POST(self):
            words = json.loads(self.rfile.read(int(self.headers["Content-Length"])))
            self._answer(b"{}", peers.obey(words))

        def do_GET(self):
            if self.path.startswith("/content/"):
                return self._answer(peers.received.content(int(self.path.rpartition("/")[2])))
            return self._answer(json.dumps(peers.received.describe()).encode())

        def _answer(self, body, _=None):
            self.send_response(200)
            self.send_header("Content-Length", str(len(body)))
            self.end_headers()
            self.wfile.write(body)

    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    return server.server_port
