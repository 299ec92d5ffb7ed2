"""Holds the servers of the tests to what they promise: they take what is right and nothing else."""
import base64
import hashlib
import hmac
import http.client
import json
import pathlib
import re
import ssl
import subprocess
import sys
import unittest
import urllib.parse

KEY, SECRET = "Qk7pLm2ZxR4tVb9NcW3yHd", "Hd83kQpZ0vLm4TxWc9RbNy2UeGj7oSa5FqKi1XrDl"
BOUNDARY = "---------------------------7da338270ba0"
PHOTO = b"\xff\xd8 photograph \r\n-- \xff\xd9"


def quote(text):
    return urllib.parse.quote(text, safe="")


class PeersTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.process = subprocess.Popen([sys.executable, PEERS], stdin=subprocess.PIPE,
                                       stdout=subprocess.PIPE, text=True)
        cls.about = json.loads(cls.process.stdout.readline())
        cls.trust = ssl.create_default_context(cafile=cls.about["authority"])

    @classmethod
    def tearDownClass(cls):
        cls.process.communicate()
        folder = pathlib.Path(cls.about["services"]).parent
        assert not folder.exists(), "the folder is left behind"

    def ask(self, service, method, path, body=None, headers=None, is_secure=True):
        host = self.about["hosts"][service]
        connection = (http.client.HTTPSConnection(host, context=self.trust) if is_secure
                      else http.client.HTTPConnection(host))
        connection.request(method, path, body, headers or {})
        answer = connection.getresponse()
        text = answer.read()
        connection.close()
        return answer, text.decode("latin-1")

    def control(self, words):
        connection = http.client.HTTPConnection("127.0.0.1", self.about["control"])
        connection.request("POST", "/", json.dumps(words))
        connection.getresponse().read()
        connection.request("GET", "/received")
        return json.loads(connection.getresponse().read())

    def signed(self, path, parameters, token_secret="", spoil=""):
        host = self.about["hosts"]["twitter_api"]
        text = "&".join(f"{name}={value}" for name, value in parameters)
        base = "&".join(quote(part) for part in ("POST", f"https://{host}{path}", text))
        key = f"{SECRET}&{token_secret}{spoil}"
        mac = hmac.new(key.encode(), base.encode(), hashlib.sha1).digest()
        pairs = [("realm", f"https://{host}/"), *parameters,
                 ("oauth_signature", quote(base64.b64encode(mac).decode()))]
        header = "OAuth " + ", ".join(f'{name}="{value}"' for name, value in pairs)
        answer, body = self.ask("twitter_api", "POST", path, text, {
            "Content-type": "application/x-www-form-urlencoded", "Authorization": header})
        return answer.status, dict(urllib.parse.parse_qsl(body)), body

    def parameters(self, *more):
        return [("oauth_consumer_key", KEY), ("oauth_nonce", "12345678"),
                ("oauth_signature_method", "HMAC-SHA1"), *more[:1], ("oauth_timestamp", "1"),
                *more[1:], ("oauth_version", "1.0")]

    def authorize(self, token, verdict, **more):
        page, text = self.ask("twitter_api", "GET", f"/oauth/authorize?oauth_token={token}")
        cookie = page.getheader("Set-Cookie").partition(";")[0]
        form = dict(re.findall(r"name='(\w+)' value='(\w+)'", text)[:2], answer=verdict, **more)
        return self.ask("twitter_api", "POST", "/oauth/authorize", urllib.parse.urlencode(form),
                        {"Cookie": cookie})

    def upload(self, service, path, fields, name, is_secure):
        begin = f'--{BOUNDARY}\r\nContent-Disposition: form-data; name="'
        parts = [f'{begin}{field}"\r\n\r\n{value}\r\n' for field, value in fields]
        head = (f'{begin}{name}"; filename="/Media/Images/KIVO0000.jpg"\r\n'
                "Content-Type: application/octet-stream\r\n\r\n")
        body = ("".join(parts) + head).encode() + PHOTO + f"\r\n--{BOUNDARY}--\r\n".encode()
        return self.ask(service, "POST", path, body, {
            "Content-Type": f"multipart/form-data; boundary={BOUNDARY}"}, is_secure)

    def test_signing_in_with_a_pin_and_uploading(self):
        path = "/oauth/request_token"
        self.assertEqual(self.signed(path, self.parameters(), spoil="x")[0], 401)
        status, issued, body = self.signed(path, self.parameters())
        self.assertEqual(status, 200)
        self.assertLess(body.index("oauth_token="), body.index("oauth_token_secret="))
        token, secret = issued["oauth_token"], issued["oauth_token_secret"]
        page, text = self.authorize(token, "allow", user="a", password="b")
        pin = re.search(r'<div id="oauth_pin">(.{7})</div>', text).group(1)
        asked = self.parameters(("oauth_token", token), ("oauth_verifier", pin))
        wrong = self.parameters(("oauth_token", token), ("oauth_verifier", "0" * 7))
        self.assertEqual(self.signed("/oauth/access_token", wrong, secret)[2], "PIN")
        self.assertEqual(self.signed("/oauth/access_token", sorted(asked), secret)[0], 401)
        status, issued, body = self.signed("/oauth/access_token", asked, secret)
        self.assertEqual((page.status, status), (200, 200))
        self.assertIn("&user_id=", body)
        fields = [("key", "4f2a9c81e6b7d035a1c8e94f7b2d6031"), ("consumer_token", KEY),
                  ("consumer_secret", SECRET), ("oauth_token", issued["oauth_token"]),
                  ("oauth_secret", issued["oauth_token_secret"]), ("message", "hello #KIVO")]
        place = ("twitpic_api", "/1/uploadAndPost.xml")
        self.assertEqual(self.upload(*place, fields, "media", False)[0].status, 200)
        kept = self.control({})[-1]
        self.assertEqual(kept["file"]["sha256"], hashlib.sha256(PHOTO).hexdigest())
        self.assertEqual(kept["fields"]["message"], "hello #KIVO")
        self.assertEqual(self.upload(*place, fields[1:], "media", False)[0].status, 401)
        self.assertEqual(self.upload(*place, fields, "fileName", False)[0].status, 401)

    def test_denial_has_its_page_and_ends_the_token(self):
        issued = self.signed("/oauth/request_token", self.parameters())[1]
        text = self.authorize(issued["oauth_token"], "deny")[1]
        self.assertGreater(text.index("Connection Denied"), 0)
        page, _ = self.ask("twitter_api", "GET",
                           f"/oauth/authorize?oauth_token={issued['oauth_token']}")
        self.assertEqual(page.status, 401)

    def test_signing_in_by_redirects_and_uploading(self):
        web = self.about["hosts"]["facebook_web"]
        success = f"http://{web}/connect/login_success.html"
        start = ("/oauth/authorize?client_id=9b1e4c7a2d8f3065e1a4b7c9d2f05e18&redirect_uri="
                 f"{success}&type=user_agent&display=popup&scope=offline_access")
        for verdict, wanted in (("deny", r"\?error_reason=user_denied$"),
                                ("allow", r"#access_token=(\w{128})&expires_in=0$")):
            begun, _ = self.ask("facebook_graph", "GET", start)
            self.assertIn("login.php", begun.getheader("Location"))
            cookie = {"Cookie": begun.getheader("Set-Cookie").partition(";")[0]}
            ended, _ = self.ask("facebook_graph", "POST", "/login.php",
                                f"answer={verdict}&user=a&password=b", cookie)
            found = re.fullmatch(re.escape(success) + wanted, ended.getheader("Location"))
            self.assertTrue(found, ended.getheader("Location"))
        fields = [("access_token", found.group(1)), ("source", "@"), ("message", "")]
        place = ("facebook_graph", "/me/photos")
        self.assertEqual(self.upload(*place, fields, "fileName", True)[0].status, 200)
        self.assertEqual(self.upload(*place, fields[1:], "fileName", True)[0].status, 400)

    def test_search_finds_as_many_as_it_is_told(self):
        for results, hostile in ((0, False), (1, False), (1000, False), (3, True)):
            self.control({"results": results, "hostile": hostile})
            _, text = self.ask("twitpic_web", "GET", "/search/show?q=%23KIVO&type=mixed&page=1",
                               is_secure=False)
            found = re.findall(r'"link":"(http:\\/\\/localhost:\d+\\/photo\\/\d+)","thumb"', text)
            self.assertEqual(len(found), results)
            self.assertEqual("javascript:" in text, hostile)
        for path, kind in (("/thumb/7", "image/png"), ("/photo/7", "text/html; charset=utf-8")):
            answer, _ = self.ask("twitpic_web", "GET", path, is_secure=False)
            self.assertEqual((answer.status, answer.getheader("Content-Type")), (200, kind))


if __name__ == "__main__":
    PEERS = sys.argv.pop(1)
    unittest.main()
