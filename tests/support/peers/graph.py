"""A service that signs people in by a redirect with a fragment, and takes their photographs."""
import secrets
import urllib.parse

from . import forms
from .forms import Wrong, require
from .wire import Answer

CLIENT_ID = "9b1e4c7a2d8f3065e1a4b7c9d2f05e18"
SUCCESS_PATH = "/connect/login_success.html"
TOKEN_SIZE = 128  # the camera takes no token that is shorter than the place where it stands


class Service:
    """The two hosts: the one that is asked, and the one whose page says how it went."""

    def __init__(self):
        self.web_host = ""  # where the second one is, once that is known
        self.tokens = set()
        self.sessions = set()

    def accept(self, token):
        self.tokens.add(token)

    def handle_graph(self, request):
        routes = {("GET", "/oauth/authorize"): self._begin, ("GET", "/login.php"): self._ask,
                  ("POST", "/login.php"): self._decide, ("POST", "/me/photos"): self._upload}
        route = routes.get((request.method, request.path))
        if route is None:
            return Answer(404, b"no such page")
        try:
            return route(request)
        except (Wrong, ValueError) as wrong:
            request.remarks["refused"] = str(wrong)
            return Answer(400, str(wrong).encode())

    def handle_web(self, request):
        if (request.method, request.path) != ("GET", SUCCESS_PATH):
            return Answer(404, b"no such page")
        return Answer(body=forms.page("Success", "<h2>Success</h2>"))

    def _success(self):
        return f"http://{self.web_host}{SUCCESS_PATH}"

    def _begin(self, request):
        wanted = (f"client_id={CLIENT_ID}&redirect_uri={self._success()}&type=user_agent"
                  "&display=popup&scope=offline_access")
        query = request.target.partition("?")[2]
        require(urllib.parse.unquote(query) == wanted, f"query {query!r}")
        session = secrets.token_hex(8)
        self.sessions.add(session)
        return Answer(302, headers=[("Location", "/login.php?next=authorize"),
                                    ("Set-Cookie", f"login={session}; Path=/; HttpOnly; Secure")])

    def _session(self, request):
        cookies = [part.strip() for part in request.field("Cookie").split(";")]
        session = next((c[6:] for c in cookies if c.startswith("login=")), None)
        require(session in self.sessions, "no cookie of this log-in")
        return session

    def _ask(self, request):
        self._session(request)
        return Answer(body=forms.log_in_page("Let the camera send photographs?", "/login.php", []))

    def _decide(self, request):
        self.sessions.discard(self._session(request))
        form = dict(forms.parse_pairs(request.body.decode()))
        if form.get("answer") != "allow":
            denied = self._success() + "?error_reason=user_denied"
            return Answer(302, headers=[("Location", denied)])
        require(form.get("user") and form.get("password"), "user name and password are missing")
        token = secrets.token_hex(TOKEN_SIZE // 2)
        self.accept(token)
        request.remarks["token"] = token
        fragment = f"#access_token={token}&expires_in=0"
        return Answer(302, headers=[("Location", self._success() + fragment)])

    def _upload(self, request):
        fields, file = forms.parse_multipart(request.field("Content-Type"), request.body)
        require(set(fields) == {"access_token", "source", "message"}, f"fields {sorted(fields)}")
        require(fields["access_token"] in self.tokens, "access token")
        require(fields["source"] == "@", "source")
        forms.check_photo(file, "fileName")
        forms.remark_upload(request, fields, file)
        return Answer(type="application/json", body=b'{"id":"1"}')
