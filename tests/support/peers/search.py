"""A search whose results are photographs, with their thumbnails and pages."""
import json
import struct
import zlib

from . import forms
from .wire import Answer

SEARCH = "/search/show?q=%23KIVO&type=mixed&page=1"
WIDTH, HEIGHT = 150, 150

# Each is a link and a thumbnail as they stand in the answer, quotes and all; none may be shown.
HOSTILE = [
    ('"javascript:alert(1)"', '"http:\\/\\/localhost\\/thumb"'),
    ('"http:\\/\\/localhost\\/"', '"data:image\\/png;base64\\/AAAA"'),
    ('"http:\\/\\/localhost\\/\'><script>document.title=1</script>"', '"http:\\/\\/localhost\\/t"'),
    ('"http:\\/\\/localhost\\/<b>"', '"http:\\/\\/localhost\\/t"'),
    ('"http:\\/\\/localhost\\/\\u0001\\n"', '"http:\\/\\/localhost\\/\\t"'),
    ('"http:\\/\\/localhost\\/a\x01b\x7f"', '"http:\\/\\/localhost\\/t"'),
    ('"http:\\/\\/localhost\\/a,b"', '"http:\\/\\/localhost\\/t"'),
    ('"file:\\/\\/\\/etc\\/passwd"', '"file:\\/\\/\\/etc\\/passwd"'),
    ('""', '""'),
    ("null", "7"),
]


def thumbnail(number):
    """A small PNG, whose colour is its number's."""
    colour = bytes([number * 67 % 200 + 40, number * 29 % 200 + 40, number * 113 % 200 + 40])
    shade = bytes(value * 2 // 3 for value in colour)
    rows = b"".join(b"\0" + (colour if y // 25 % 2 else shade) * WIDTH for y in range(HEIGHT))

    def chunk(kind, data):
        return (struct.pack(">I", len(data)) + kind + data
                + struct.pack(">I", zlib.crc32(kind + data)))

    header = struct.pack(">IIBBBBB", WIDTH, HEIGHT, 8, 2, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows))
            + chunk(b"IEND", b""))


class Service:
    """The search, the thumbnails and the pages behind them."""

    def __init__(self):
        self.results = 30
        self.is_hostile = False

    def handle(self, request):
        if request.method != "GET":
            return Answer(405, b"only to look at")
        if request.target == SEARCH:
            return Answer(body=self._results(request.field("Host")), type="application/json")
        place, _, number = request.path.strip("/").partition("/")
        if not number.isdigit():
            return Answer(404, b"no such page")
        if place == "thumb":
            return Answer(body=thumbnail(int(number)), type="image/png")
        return Answer(body=forms.page(f"Photograph {number}", f"<h2>Photograph {number}</h2>"
                                      f"<img src='/thumb/{number}'>"))

    def _results(self, host):
        def quoted(path):
            return json.dumps(f"http://{host}/{path}").replace("/", "\\/")

        entries = [(quoted(f"photo/{i}"), quoted(f"thumb/{i}")) for i in range(self.results)]
        if self.is_hostile:
            entries += HOSTILE
        texts = [f'{{"id":{i},"link":{link},"thumb":{thumb},"user":"someone"}}'
                 for i, (link, thumb) in enumerate(entries)]
        if self.is_hostile:
            texts += ['{"id":1,"thumb":"http:\\/\\/localhost\\/t"}', '{"link":"http:']
        return ("[" + ",".join(texts) + "]").encode()
