#!/usr/bin/env python3
"""Hostile HTTP clients, and a scraper beside them that measures how long it waits.

hostile.py PORT [REQUESTS]   against an exporter on the loopback address; default: 100000 requests
"""

import http.client
import multiprocessing
import random
import socket
import struct
import sys
import time
from collections import deque

HELD = 150  # connections that each attacker keeps open and feeds byte by byte
PATHS = ["/", "/metrics", "/data.json", "/api/state", "/api/check", "/api/history", "/api/history?port=1/1&ring=24h",
         "/api/history?port=%00%ff", "/api/history?port=" + "9" * 3000, "/api/../../etc/passwd", "/%", "//", "*"]


def request(random_: random.Random) -> bytes:
    """Any of: right, of a foreign host, a wrong method, with a body, huge, no HTTP at all."""
    path = random_.choice(PATHS)
    host = random_.choice(["localhost", "127.0.0.1:1", "evil.example", "", "a" * 300, "[::1", "\x00"])
    method = random_.choice(["GET", "GET", "GET", "HEAD", "POST", "PUT", "TRACE", "CONNECT", "get", "G" * 5000])
    headers = random_.choice(["", "Connection: close\r\n", "Content-Length: 99999999999999999999\r\n",
                              "Content-Length: -1\r\n", "Content-Length: 5000\r\n", "Transfer-Encoding: chunked\r\n",
                              "If-None-Match: " + "x" * 20000 + "\r\n", "X: y\r\n" * 3000, "Expect: 100-continue\r\n",
                              "Host: localhost\r\n", ": \r\n", "\r", "Range: bytes=0-,-1\r\n"])
    version = random_.choice(["1.1", "1.1", "1.0", "9.9"])
    text = f"{method} {path} HTTP/{version}\r\nHost: {host}\r\n{headers}\r\n".encode("latin-1")
    kind = random_.randrange(6)
    if kind == 0:
        return text[:random_.randrange(len(text))]
    if kind == 1:
        return random_.randbytes(random_.randrange(1, 3000))
    return text + (random_.randbytes(random_.randrange(6000)) if kind == 2 else text if kind == 3 else b"")


def attack(port: int, requests: int, seed: int) -> None:
    random_ = random.Random(seed)
    held: deque[socket.socket] = deque()
    for _ in range(requests):
        try:
            one = socket.create_connection(("127.0.0.1", port), timeout=0.05)
            end = random_.randrange(4)
            one.sendall(b"GET /" if end == 0 else request(random_))
            if end == 0:  # kept: the slow ones
                held.append(one)
                if len(held) > HELD:
                    held.popleft().close()
                random_.choice(held).send(b"x")
                continue
            if end == 1:  # an answer that is not read, and a reset
                one.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
            elif end == 2:
                one.shutdown(socket.SHUT_WR)
                one.recv(65536)
            one.close()
        except OSError:
            pass  # refused, reset, cut off: what an attacker has to expect


def scrape(port: int, path: str) -> tuple[int, float]:
    """The status and the seconds of one honest request."""
    start = time.monotonic()
    connection = http.client.HTTPConnection("127.0.0.1", port, timeout=20)
    connection.request("GET", path)
    answer = connection.getresponse()
    answer.read()
    connection.close()
    return answer.status, time.monotonic() - start


def siege(port: int, requests: int, attackers: int = 2) -> tuple[list[int], list[float]]:
    """All statuses of the scraper, and its times in order."""
    processes = [multiprocessing.Process(target=attack, args=(port, requests // attackers, seed))
                 for seed in range(attackers)]
    for process in processes:
        process.start()
    statuses, times = [], []
    while any(process.is_alive() for process in processes):
        status, seconds = scrape(port, "/metrics")
        statuses.append(status)
        times.append(seconds)
        time.sleep(0.02)
    for process in processes:
        process.join()
        assert process.exitcode == 0
    return statuses, sorted(times)


if __name__ == "__main__":
    count = int(sys.argv[2]) if len(sys.argv) > 2 else 100000
    begin = time.monotonic()
    found, waits = siege(int(sys.argv[1]), count, 8)
    half, most, slowest = (waits[min(len(waits) * part // 100, len(waits) - 1)] * 1000 for part in (50, 99, 100))
    print(f"{count} requests in {time.monotonic() - begin:.0f} s; {len(waits)} scrapes, {sum(s != 200 for s in found)} "
          f"not 200, median {half:.1f} ms, 99 % within {most:.1f} ms, slowest {slowest:.1f} ms")
