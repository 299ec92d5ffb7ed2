"""A service that signs people in with OAuth 1.0 and a PIN, and takes their photographs.

Signatures are computed again over what arrived, in the order in which it arrived: the camera does
not sort the parameters of its second request.
"""
import base64
import hashlib
import hmac
import secrets
import time
import urllib.parse

from . import forms
from .forms import Wrong, require
from .wire import Answer

CONSUMER_KEY = "Qk7pLm2ZxR4tVb9NcW3yHd"
CONSUMER_SECRET = "Hd83kQpZ0vLm4TxWc9RbNy2UeGj7oSa5FqKi1XrDl"
API_KEY = "4f2a9c81e6b7d035a1c8e94f7b2d6031"
DENIED = "Connection Denied"


def quote(text):
    return urllib.parse.quote(text, safe="-._~")


def sign(method, url, parameters, token_secret):
    base = "&".join(quote(part) for part in (method, url, parameters))
    key = f"{CONSUMER_SECRET}&{token_secret}"
    return base64.b64encode(hmac.new(key.encode(), base.encode(), hashlib.sha1).digest()).decode()


def parse_authorization(value):
    scheme, _, rest = value.partition(" ")
    require(scheme == "OAuth", f"authorization {value!r}")
    pairs = [part.partition("=") for part in rest.split(", ")]
    require(all(len(text) > 1 and text[0] == text[-1] == '"' for _, _, text in pairs),
            "an unquoted value")
    return [(name, text[1:-1]) for name, _, text in pairs]


class Service:
    """The two hosts: where people sign in, and where photographs go."""

    def __init__(self):
        self.waiting = {}  # request token -> its secret, and the PIN once that is given
        self.issued = {}  # access token -> its secret
        self.sessions = set()

    def accept(self, token, secret):
        self.issued[token] = secret

    def handle_api(self, request):
        routes = {("POST", "/oauth/request_token"): self._request_token,
                  ("POST", "/oauth/access_token"): self._access_token,
                  ("GET", "/oauth/authorize"): self._ask,
                  ("POST", "/oauth/authorize"): self._decide}
        route = routes.get((request.method, request.path))
        return self._guard(route, request) if route else Answer(404, b"no such page")

    def handle_uploads(self, request):
        if (request.method, request.path) != ("POST", "/1/uploadAndPost.xml"):
            return Answer(404, b"no such page")
        return self._guard(self._upload, request)

    @staticmethod
    def _guard(route, request):
        try:
            return route(request)
        except (Wrong, ValueError) as wrong:
            request.remarks["refused"] = str(wrong)
            return Answer(401, str(wrong).encode())

    def _verify(self, request, names, token_secret):
        """The parameters of a signed request, all of which are where they should be."""
        require(request.field("Content-Type") == "application/x-www-form-urlencoded",
                "content type")
        signed = request.body.decode("ascii")
        parameters = dict(forms.parse_pairs(signed))
        require(list(parameters) == names, f"parameters {list(parameters)}")
        host = request.field("Host")
        header = dict(parse_authorization(request.field("Authorization")))
        require(header.pop("realm", "") == f"https://{host}/", "realm")
        signature = urllib.parse.unquote(header.pop("oauth_signature", ""))
        require(header == parameters, f"header {sorted(header)}")
        require(parameters["oauth_consumer_key"] == CONSUMER_KEY, "consumer key")
        require(parameters["oauth_signature_method"] == "HMAC-SHA1", "method")
        require(parameters["oauth_version"] == "1.0", "version")
        require(5 <= len(parameters["oauth_nonce"]) <= 15, "nonce")
        request.remarks["ahead"] = int(parameters["oauth_timestamp"]) - int(time.time())
        wanted = sign("POST", f"https://{host}{request.target}", signed, token_secret)
        require(hmac.compare_digest(signature, wanted), "signature")
        return parameters

    def _request_token(self, request):
        self._verify(request, ["oauth_consumer_key", "oauth_nonce", "oauth_signature_method",
                               "oauth_timestamp", "oauth_version"], "")
        token, secret = secrets.token_hex(16), secrets.token_hex(20)
        self.waiting[token] = [secret, None]
        return Answer(type="text/plain", body=f"oauth_token={token}&oauth_token_secret={secret}"
                      "&oauth_callback_confirmed=true".encode())

    def _access_token(self, request):
        token = dict(forms.parse_pairs(request.body.decode("ascii"))).get("oauth_token")
        require(token in self.waiting, "unknown request token")
        secret, pin = self.waiting[token]
        parameters = self._verify(
            request, ["oauth_consumer_key", "oauth_nonce", "oauth_signature_method", "oauth_token",
                      "oauth_timestamp", "oauth_verifier", "oauth_version"], secret)
        require(pin is not None and parameters["oauth_verifier"] == pin, "PIN")
        del self.waiting[token]
        token, secret = "7-" + secrets.token_hex(20), secrets.token_hex(20)
        self.accept(token, secret)
        return Answer(type="text/plain", body=f"oauth_token={token}&oauth_token_secret={secret}"
                      "&user_id=7&screen_name=someone".encode())

    def _ask(self, request):
        token = dict(forms.parse_pairs(request.target.partition("?")[2])).get("oauth_token")
        require(token in self.waiting, "unknown request token")
        session = secrets.token_hex(8)
        self.sessions.add(session)
        return Answer(body=forms.log_in_page("Let the camera send photographs?", "/oauth/authorize",
                                             [("oauth_token", token), ("session", session)]),
                      headers=[("Set-Cookie", f"session={session}; HttpOnly; Secure")])

    def _decide(self, request):
        form = dict(forms.parse_pairs(request.body.decode()))
        token, session = form.get("oauth_token"), form.get("session")
        require(token in self.waiting, "unknown request token")
        require(session in self.sessions and f"session={session}" in request.field("Cookie"),
                "no cookie of this log-in")
        if form.get("answer") != "allow":
            del self.waiting[token]
            return Answer(body=forms.page(DENIED, f"<h2>{DENIED}</h2>"))
        require(form.get("user") and form.get("password"), "user name and password are missing")
        pin = "".join(secrets.choice("0123456789") for _ in range(7))
        self.waiting[token][1] = request.remarks["pin"] = pin
        return Answer(body=forms.page("Granted", "<h2>The camera may go on. Its number is</h2>"
                                      f'<div id="oauth_pin">{pin}</div>'))

    def _upload(self, request):
        fields, file = forms.parse_multipart(request.field("Content-Type"), request.body)
        require(set(fields) == {"key", "consumer_token", "consumer_secret", "oauth_token",
                                "oauth_secret", "message"}, f"fields {sorted(fields)}")
        require(fields["key"] == API_KEY, "key")
        require(fields["consumer_token"] == CONSUMER_KEY, "consumer token")
        require(fields["consumer_secret"] == CONSUMER_SECRET, "consumer secret")
        require(self.issued.get(fields["oauth_token"]) == fields["oauth_secret"], "access token")
        forms.check_photo(file, "media")
        forms.remark_upload(request, fields, file)
        return Answer(type="text/xml", body=b"<image><id>1</id></image>")
