#!/usr/bin/env python3
"""How long it takes from the start of the process to the first frame of the preview, headless and
in a window on a private X server."""
import os
import pathlib
import statistics
import subprocess
import tempfile
import time

RUNS = 15
PROGRAM = pathlib.Path(__file__).resolve().parent / "kivo-camera"


def first_preview_ms(arguments, environment):
    """Milliseconds until the program says that there is a preview."""
    with tempfile.TemporaryDirectory() as data:
        command = [PROGRAM, "--clock", "real", "--script", "-", "--data", data,
                   "--primary", "scene", "--secondary", "scene", *arguments]
        start = time.monotonic()
        with subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                              env={**os.environ, **environment}, text=True) as process:
            process.stdin.write("await preview\nprint sounds\n")
            process.stdin.flush()
            has_started = bool(process.stdout.readline())
            elapsed = (time.monotonic() - start) * 1000
            process.communicate()
        if not has_started or process.returncode != 0:
            raise SystemExit("startup-bench: the camera did not start or ended badly")
        return elapsed


def report(name, arguments, environment):
    times = sorted(first_preview_ms(arguments, environment) for _ in range(RUNS))
    print(f"{name:30} {statistics.median(times):7.1f} ms median {times[-1]:7.1f} ms at most")


def main():
    print(f"process start to first preview frame, {RUNS} runs")
    report("headless", ["--headless"], {})
    with subprocess.Popen(["Xvfb", "-displayfd", "1", "-screen", "0", "1024x768x24"],
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True) as server:
        display = ":" + server.stdout.readline().strip()
        try:
            report("in a window", [], {"DISPLAY": display, "GDK_BACKEND": "x11",
                                       "DBUS_SESSION_BUS_ADDRESS": "disabled:",
                                       "GTK_A11Y": "none"})
        finally:
            server.terminate()


if __name__ == "__main__":
    main()
