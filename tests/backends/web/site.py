"""A small site for a browser on loopback: site.py [CERTIFICATE KEY].

Prints the port, then each request as a line: method, path, what cookies came, what was posted.
"""
import http.server
import ssl
import sys
import urllib.parse

HEAD = "<!DOCTYPE html><html><head><meta charset=UTF-8><style>body{margin:0}"
BOXES = HEAD + """
div,a{position:absolute;width:100px;height:60px} a{display:block;background:#0000ff}
</style></head><body style='background:#00c800'><div style='background:#ff0000;left:0;top:0'></div>
%s</body></html>"""
LINK = "<a style='left:%dpx;top:100px' href='%s' %s></a>"
FIELDS = HEAD + """ input,textarea{position:absolute;left:100px;width:300px;height:40px}
</style></head><body><form action=/login method=POST><input name=user style='top:20px'>
<input name=word type=password style='top:80px'><input name=low style='top:380px;background:#ff0000'>
<input type=submit value=Go style='top:140px;left:500px;width:80px'></form></body></html>"""
TRICKS = ["javascript:document.title=location='/fooled'", "file:///etc/hostname",
          "data:text/html,fooled", "/asks", "/other"]


class Site(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def log_message(self, *_):
        pass

    def answer(self, body, status=200, kind="text/html", **headers):
        body = body if isinstance(body, bytes) else body.encode()
        self.send_response(status)
        self.send_header("Content-Type", kind)
        self.send_header("Content-Length", str(len(body)))
        for name, value in headers.items():
            self.send_header(name.replace("_", "-"), value)
        self.end_headers()
        self.wfile.write(body)

    def note(self, posted=""):
        print(self.command, self.path, self.headers.get("Cookie", "-"), posted, flush=True)

    def do_POST(self):
        posted = self.rfile.read(int(self.headers["Content-Length"])).decode()
        self.note(posted)
        self.answer("<html><body>PIN 1234567 for " + posted + "</body></html>", Set_Cookie="after=1")

    def do_GET(self):
        self.note()
        path, _, query = self.path.partition("?")
        if path == "/":
            self.answer(BOXES % (LINK % (200, "/next", "")), Set_Cookie="known=yes")
        elif path == "/tricks":
            self.answer(BOXES % "".join(
                LINK % (110 * i, url, "target=_blank" if url == "/other" else "")
                for i, url in enumerate(TRICKS)))
        elif path == "/asks":
            self.answer("<script>alert(1); confirm(2); prompt(3); window.open('/opened'); fetch('/ran');"
                        "navigator.mediaDevices && navigator.mediaDevices.getUserMedia({video:true});"
                        "Notification.requestPermission();</script><body>asked</body>")
        elif path == "/fields":
            self.answer(FIELDS, Set_Cookie="before=1")
        elif path == "/bytes":
            self.answer(b"x" * int(query))
        elif path == "/missing":
            self.answer("<body style='background:#00c800'>none", status=404)
        elif path == "/file":
            self.answer(b"PK\x03\x04", kind="application/zip")
        elif path == "/slow":
            self.send_response(200)
            self.send_header("Content-Type", "text/html")
            self.end_headers()
            self.wfile.write(b"<html>")
            self.rfile.read(1)  # until the browser has enough
        elif path == "/cut":
            self.send_response(200)
            self.send_header("Content-Type", "text/html")
            self.send_header("Content-Length", "1000")
            self.end_headers()
            self.wfile.write(b"<html>")
            self.close_connection = True
        else:
            self.answer(BOXES % "")


server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Site)
server.daemon_threads = True
server.handle_error = lambda *_: None  # a browser that has enough
if len(sys.argv) > 2:
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(sys.argv[1], sys.argv[2])
    server.socket = context.wrap_socket(server.socket, server_side=True)
print(server.server_port, flush=True)
server.serve_forever()
