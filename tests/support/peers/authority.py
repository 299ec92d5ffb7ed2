"""An authority made on the spot, and certificates for this machine: a good one and bad ones."""
import pathlib
import ssl
import subprocess

CONFIG = """
[ca]
default_ca = here
[here]
dir = {folder}
database = $dir/index
new_certs_dir = $dir
rand_serial = yes
unique_subject = no
default_md = sha256
policy = any
[any]
commonName = supplied
[req]
distinguished_name = name
[name]
[authority]
basicConstraints = critical, CA:true
keyUsage = critical, keyCertSign
subjectKeyIdentifier = hash
[leaf]
basicConstraints = CA:false
extendedKeyUsage = serverAuth
subjectAltName = {names}
"""
HERE = "DNS:localhost, IP:127.0.0.1, IP:::1"
LONG_AGO, YESTERYEAR, FAR_AHEAD = "20200101000000Z", "20200201000000Z", "20491231000000Z"
NEW_KEY = ["-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes"]


class Authority:
    """A key and certificate in a folder of its own, which it signs others with."""

    def __init__(self, folder, name):
        self.folder = pathlib.Path(folder)
        self.folder.mkdir(mode=0o700, parents=True)
        (self.folder / "index").touch()
        self.pem = self.folder / "authority.pem"
        self._run("req", "-x509", *NEW_KEY, "-keyout", "authority.key", "-out", "authority.pem",
                  "-subj", f"/CN={name}", "-days", "3650", "-extensions", "authority")

    def issue(self, name, names=HERE, until=FAR_AHEAD):
        """A context for a server that shows this certificate."""
        self._run("req", *NEW_KEY, "-keyout", f"{name}.key", "-out", f"{name}.csr",
                  "-subj", f"/CN={name}")
        self._run("ca", "-batch", "-notext", "-in", f"{name}.csr", "-out", f"{name}.pem",
                  "-cert", "authority.pem", "-keyfile", "authority.key", "-extensions", "leaf",
                  "-startdate", LONG_AGO, "-enddate", until, names=names)
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(self.folder / f"{name}.pem", self.folder / f"{name}.key")
        return context

    def _run(self, verb, *words, names=HERE):
        config = self.folder / "openssl.cnf"
        config.write_text(CONFIG.format(folder=self.folder, names=names))
        ran = subprocess.run(["openssl", verb, "-config", config, *words], cwd=self.folder,
                             stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                             stderr=subprocess.PIPE, check=False)
        if ran.returncode != 0:
            raise RuntimeError(f"openssl {verb}: {ran.stderr.decode(errors='replace')}")


def make_contexts(folder):
    """The path of the trusted authority, and a server's context for each kind of certificate."""
    trusted = Authority(pathlib.Path(folder) / "trusted", "Authority of the peers")
    foreign = Authority(pathlib.Path(folder) / "foreign", "Nobody's authority")
    old = trusted.issue("old-tls")
    old.minimum_version = ssl.TLSVersion.TLSv1
    old.maximum_version = ssl.TLSVersion.TLSv1_1
    old.set_ciphers("ALL:@SECLEVEL=0")
    return trusted.pem, {
        "good": trusted.issue("localhost"),
        "wrong": trusted.issue("elsewhere", names="DNS:elsewhere.example"),
        "expired": trusted.issue("expired", until=YESTERYEAR),
        "foreign": foreign.issue("localhost"),
        "old": old,
    }
