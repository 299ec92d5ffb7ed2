"""A reader of PNG files by the library alone."""
import ctypes

_LIBRARY = ctypes.CDLL("libpng16.so.16")
_COLOUR = 2  # flags of a format, beside alpha; 16 bits a channel and palettes have others
_RGB, _RGBA = _COLOUR, _COLOUR | 1


class _Image(ctypes.Structure):
    _fields_ = [("opaque", ctypes.c_void_p)] + [
        (name, ctypes.c_uint32) for name in ("version", "width", "height", "format", "flags",
                                             "colormap_entries", "warning_or_error")
    ] + [("message", ctypes.c_char * 64)]


class PngFile:
    """Eight bits a channel, colour with or without alpha; all else is refused."""

    def __init__(self, path):
        image = _Image(version=1)
        _check(image, _LIBRARY.png_image_begin_read_from_file(ctypes.byref(image),
                                                              str(path).encode()))
        self.width, self.height = image.width, image.height
        if image.format not in (_RGB, _RGBA):
            _LIBRARY.png_image_free(ctypes.byref(image))
            raise ValueError(f"unexpected format {image.format}")
        self.channels = 4 if image.format == _RGBA else 3
        self._bytes = ctypes.create_string_buffer(self.width * self.height * self.channels)
        _check(image, _LIBRARY.png_image_finish_read(ctypes.byref(image), None, self._bytes, 0,
                                                     None))
        self._bytes = self._bytes.raw

    def plane(self, channel):
        """The rows of one channel."""
        values = self._bytes[channel::self.channels]
        return [values[start:start + self.width]
                for start in range(0, len(values), self.width)]

    def pixels(self):
        """Rows of tuples."""
        planes = [self.plane(channel) for channel in range(self.channels)]
        return [list(zip(*channels)) for channels in zip(*planes)]


def _check(image, outcome):
    if not outcome or image.warning_or_error:
        raise ValueError(image.message.decode())
