"""Reading the bodies of forms, strictly, and writing pages."""
import hashlib
import html
import urllib.parse

BOUNDARY = "-" * 27 + "7da338270ba0"


class Wrong(Exception):
    """Why a request is refused, in words."""


def parse_pairs(text):
    """The pairs of a query or a form, in their order."""
    return urllib.parse.parse_qsl(text, keep_blank_values=True, strict_parsing=True)


def require(condition, words):
    if not condition:
        raise Wrong(words)


def parse_multipart(content_type, body):
    """Text fields by name, and the one file. Raises Wrong unless every byte is in its place."""
    require(content_type == "multipart/form-data; boundary=" + BOUNDARY,
            f"content type {content_type!r}")
    delimiter = b"--" + BOUNDARY.encode()
    require(body.startswith(delimiter + b"\r\n"), "no delimiter at the beginning")
    require(body.endswith(b"\r\n" + delimiter + b"--\r\n"), "no closing delimiter at the end")
    inside = b"\r\n" + body[:-len(delimiter) - 6]
    fields, file = {}, None
    for part in inside.split(b"\r\n" + delimiter + b"\r\n")[1:]:
        head, gap, content = part.partition(b"\r\n\r\n")
        require(gap, "a part without an empty line")
        require(file is None, "something behind the file")
        lines = head.decode("utf-8").split("\r\n")
        prefix = 'Content-Disposition: form-data; name="'
        require(lines[0].startswith(prefix) and lines[0].endswith('"'), f"line {lines[0]!r}")
        name, is_file, filename = lines[0][len(prefix):-1].partition('"; filename="')
        if not is_file:
            require(len(lines) == 1 and name not in fields, f"text field {name!r}")
            fields[name] = content.decode("utf-8")
            continue
        require(len(lines) == 2 and lines[1].startswith("Content-Type: "), f"lines {lines!r}")
        file = {"name": name, "filename": filename, "type": lines[1].partition(": ")[2],
                "size": len(content), "sha256": hashlib.sha256(content).hexdigest(),
                "content": content}
    require(file is not None, "no file")
    return fields, file


def remark_upload(request, fields, file):
    """Leaves what an upload held, but for its secrets, where tests can ask for it."""
    request.remarks["fields"] = fields
    request.remarks["file"] = {key: file[key] for key in file if key != "content"}
    request.remarks["content"] = file["content"]


def check_photo(file, name):
    require(file["name"] == name, f"the file is called {file['name']!r}")
    require(file["type"] == "application/octet-stream", f"the file is of type {file['type']!r}")
    require(file["filename"].startswith("/"), f"the file comes from {file['filename']!r}")
    require(file["content"][:2] == b"\xff\xd8", "the file is no JPEG")


def page(title, body):
    style = "body{font:28px sans-serif;margin:40px} input,button{font:28px sans-serif;margin:8px}"
    return (f"<!DOCTYPE html><html><head><title>{html.escape(title)}</title>"
            f"<style>{style}</style></head><body>{body}</body></html>").encode()


def log_in_page(title, action, hidden):
    """A form for name and password; Allow and Deny send it."""
    kept = "".join(f"<input type='hidden' name='{html.escape(name)}' value='{html.escape(value)}'>"
                   for name, value in hidden)
    return page(title, f"<h2>{html.escape(title)}</h2><form method='post' action='{action}'>{kept}"
                "<input id='user' name='user' placeholder='user name'><br>"
                "<input id='password' name='password' type='password' placeholder='password'><br>"
                "<button id='allow' name='answer' value='allow'>Allow</button>"
                "<button id='deny' name='answer' value='deny'>Deny</button></form>")
