#!/usr/bin/env python3
"""Starts the servers that the camera shares with, on this machine, until it is interrupted.

  peers.py --serve          for a person: says how to start the camera with them
  peers.py                  for a program: a line of JSON with ports and paths; ends with its input
"""
import argparse
import json
import pathlib
import signal
import sys
import tempfile

sys.dont_write_bytecode = True  # nothing is left in the tree

from peers import authority, control, graph, oauth, search
from peers.wire import Server

SERVICES = {"twitter_api": True, "twitpic_api": False, "twitpic_web": False,
            "facebook_graph": True, "facebook_web": False}  # whether over TLS


class Peers:
    """All services, their faults and what they have received."""

    def __init__(self, folder):
        self.faults, self.received = control.Faults(), control.Received()
        self.oauth, self.graph, self.search = oauth.Service(), graph.Service(), search.Service()
        self.authority, contexts = authority.make_contexts(folder)
        handlers = {"twitter_api": self.oauth.handle_api, "twitpic_api": self.oauth.handle_uploads,
                    "twitpic_web": self.search.handle, "facebook_graph": self.graph.handle_graph,
                    "facebook_web": self.graph.handle_web}
        self.servers = {name: Server(name, handlers[name], self.received.add, self.faults,
                                     contexts if is_secure else None)
                        for name, is_secure in SERVICES.items()}
        self.graph.web_host = self.hosts()["facebook_web"]
        self.services = pathlib.Path(folder) / "services.ini"
        lines = [f"{name} = {host}" for name, host in self.hosts().items()]
        self.services.write_text("\n".join(["[Services]", *lines, ""]))

    def hosts(self):
        return {name: f"localhost:{server.port}" for name, server in self.servers.items()}

    def obey(self, words):
        if words.get("clear"):
            self.faults.clear()
            self.received.clear()
            self.search.results, self.search.is_hostile = 30, False
        if "fault" in words:
            self.faults.set(dict(words["fault"]))
        self.search.results = words.get("results", self.search.results)
        self.search.is_hostile = words.get("hostile", self.search.is_hostile)
        accepted = words.get("accept", {})
        if "oauth_token" in accepted:
            self.oauth.accept(accepted["oauth_token"], accepted["oauth_secret"])
        if "access_token" in accepted:
            self.graph.accept(accepted["access_token"])


def main():
    parser = argparse.ArgumentParser(description=__doc__.partition("\n")[0])
    parser.add_argument("--serve", action="store_true", help="for a person, until interrupted")
    arguments = parser.parse_args()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(0))  # so that the folder goes
    with tempfile.TemporaryDirectory(prefix="kivo-peers-") as folder:
        peers = Peers(folder)
        port = control.serve_control(peers)
        if arguments.serve:
            print(f"kivo-camera --services {peers.services} --ca {peers.authority}\n\n"
                  "Any user name and password will do. What has arrived: "
                  f"http://127.0.0.1:{port}/received\nControl-C ends.", flush=True)
            try:
                signal.pause()
            except KeyboardInterrupt:
                return
        print(json.dumps({"control": port, "hosts": peers.hosts(),
                          "services": str(peers.services), "authority": str(peers.authority)}),
              flush=True)
        sys.stdin.read()


if __name__ == "__main__":
    main()
