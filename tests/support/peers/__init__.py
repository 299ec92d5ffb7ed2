"""The servers that the camera shares with, for tests and for a person who tries it out by hand.

Python's standard library alone, so that signatures, bodies and certificates are judged by code that
has nothing in common with the camera's.
"""
