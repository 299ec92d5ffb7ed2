"""A reader of PNG files that shares nothing with the program's."""
import struct
import zlib


class PngFile:
    """Eight bits a channel, colour with or without alpha, not interlaced; all else is refused."""

    def __init__(self, path):
        content = path.read_bytes()
        if content[:8] != b"\x89PNG\r\n\x1a\n":
            raise ValueError("not a PNG file")
        compressed = b""
        for kind, data in _chunks(content[8:]):
            if kind == b"IHDR":
                self.width, self.height, *form = struct.unpack(">IIBBBBB", data)
            elif kind == b"IDAT":
                compressed += data
        if form not in ([8, 2, 0, 0, 0], [8, 6, 0, 0, 0]):
            raise ValueError(f"unexpected form {form}")
        self.channels = 4 if form[1] == 6 else 3
        self._filtered = zlib.decompress(compressed)
        stride = self.width * self.channels + 1
        if len(self._filtered) != stride * self.height:
            raise ValueError("not as many pixels as the header says")
        if max(self._filtered[::stride]) > 4:
            raise ValueError("unknown filter")

    def plane(self, channel):
        """The rows of one channel; filters look at nothing but the same channel."""
        stride = self.width * self.channels + 1
        rows, above = [], bytes(self.width)
        for start in range(0, len(self._filtered), stride):
            row = bytearray(self._filtered[start + 1 + channel:start + stride:self.channels])
            _undo(self._filtered[start], row, above)
            rows.append(row)
            above = row
        return rows

    def pixels(self):
        """Rows of tuples."""
        planes = [self.plane(channel) for channel in range(self.channels)]
        return [list(zip(*channels)) for channels in zip(*planes)]


def _chunks(content):
    kind = b""
    while kind != b"IEND":
        length, kind = struct.unpack(">I4s", content[:8])
        data, checksum = content[8:8 + length], content[8 + length:12 + length]
        if struct.pack(">I", zlib.crc32(kind + data)) != checksum:
            raise ValueError("damaged chunk")
        yield kind, data
        content = content[12 + length:]


def _undo(kind, row, above):
    """Adds the filter's prediction to every byte of `row`."""
    if kind == 0:
        return
    left = corner = 0
    for x, up in enumerate(above):
        left = row[x] = row[x] + _prediction(kind, left, up, corner) & 255
        corner = up


def _prediction(kind, left, up, corner):
    if kind < 3:
        return left if kind == 1 else up
    if kind == 3:
        return (left + up) // 2
    estimate = left + up - corner
    return min((left, up, corner), key=lambda value: abs(estimate - value))
