#!/usr/bin/env python3
# hostile.py SITE BUILDER: serves a site and treats the server badly: ways out of the folder, huge
# headers, slow, silent and very many clients. Tells whether it still answers, how soon, and what
# memory it takes; exit code 1 where it leaks, hangs or grows.
import os
import re
import resource
import socket
import subprocess
import sys
import threading
import time

MOST_GROWTH_KB = 64 * 1024
SOON = 5  # seconds

soft, hard = resource.getrlimit(resource.RLIMIT_NOFILE)
resource.setrlimit(resource.RLIMIT_NOFILE, (min(hard, 8192), hard))
site, builder = sys.argv[1:]
# The server gets what a shell gives.
server = subprocess.Popen([builder, "site", "serve", site], stdout=subprocess.PIPE, text=True,
                          preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_NOFILE, (1024, hard)))
port = 0
for line in server.stdout:
    if found := re.search(r"localhost:(\d+)", line):
        port = int(found[1])
        break
threading.Thread(target=server.stdout.read, daemon=True).start()
faults = []


def memory():
    with open(f"/proc/{server.pid}/status") as status:
        return int(re.search(r"VmRSS:\s+(\d+)", status.read())[1])


def connect():
    return socket.create_connection(("127.0.0.1", port), timeout=30)


def ask(raw):
    """What comes back, until the server closes; nothing if it refuses."""
    answer = b""
    with connect() as client:
        try:
            client.sendall(raw)
            while block := client.recv(65536):
                answer += block
        except OSError:
            pass
    return answer


def get(path, headers="", host="localhost"):
    return ask(f"GET {path} HTTP/1.1\r\nHost: {host}\r\nConnection: close\r\n{headers}\r\n".encode())


def status_of(answer):
    return answer.split(b" ", 2)[1].decode() if answer.startswith(b"HTTP/") else "closed"


def tell(what, ok=True):
    took = time.monotonic()
    alive = status_of(get("/")) == "200"
    took = time.monotonic() - took
    ok = ok and alive and took < SOON
    print(f"{what}: a page in {took * 1000:.0f} ms, {memory()} KB{'' if ok else '  FAULT'}", flush=True)
    if not ok:
        faults.append(what)


tell("at the beginning")
start = memory()
ways_out = ["/../../etc/passwd", "/%2e%2e/%2e%2e/etc/passwd", "/..%2f..%2fetc%2fpasswd", "/....//etc/passwd",
            "/%252e%252e/etc/passwd", "/..%5c..%5cetc/passwd", "//etc/passwd", "/%00/etc/passwd",
            "/index.html%00.png", "/.lumenfold-output", "/./.lumenfold-output", "/%2elumenfold-output",
            "/assets/../.lumenfold-output", "/assets/../../.lumenfold-site", "/../.lumenfold-site",
            "http://localhost/../.lumenfold-site", "/%c0%ae%c0%ae/.lumenfold-site"]
answers = [get(way) for way in ways_out]
leaks = [way for way, answer in zip(ways_out, answers)
         if b"root:" in answer or b'"format"' in answer or b"lumenfold-output" in answer.lower()]
tell(f"{len(ways_out)} ways out: {' '.join(sorted(set(map(status_of, answers))))}, "
     f"{len(leaks)} leaks {leaks}", not leaks)
foreign = status_of(get("/", host="evil.example"))
tell(f"a foreign host: {foreign}", foreign == "403")
for size in (10_000, 1_000_000, 50_000_000):
    tell(f"a header of {size} bytes: {status_of(get('/', 'X: ' + 'a' * size + chr(13) + chr(10)))}")
tell(f"100,000 headers: {status_of(get('/', ''.join(f'X{i}: a{chr(13)}{chr(10)}' for i in range(100_000))))}")
tell(f"an address of 1,000,000 bytes: {status_of(get('/' + 'a' * 1_000_000))}")
tell("a body of 50 MB: " + status_of(ask(
    b"POST / HTTP/1.1\r\nHost: localhost\r\nContent-Length: 50000000\r\n\r\n" + b"a" * 50_000_000)))
tell("100 bodies without an end: " + status_of([ask(
    b"GET / HTTP/1.1\r\nHost: localhost\r\nTransfer-Encoding: chunked\r\n\r\nffffffff\r\n" + b"a" * 100_000)
    for i in range(100)][-1]))
tell("a range: " + status_of(get("/", "Range: bytes=" + ",".join(["0-"] * 1000) + "\r\n")))
tell("noise: " + status_of(ask(os.urandom(100_000))))


def all_at_once(count):
    got = []

    def one():
        try:
            got.append(status_of(get("/index.html")))
        except OSError:
            got.append("refused")

    threads = [threading.Thread(target=one) for _ in range(count)]
    begin = time.monotonic()
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    tell(f"{count} at once: {got.count('200')} answered in {time.monotonic() - begin:.1f} s")


all_at_once(1000)
silent = [connect() for _ in range(1000)]
tell("beside 1,000 silent ones")
for client in silent:
    client.close()
slow = [connect() for _ in range(1000)]
ending = threading.Event()


def trickle():
    for client in slow:
        try:
            client.sendall(b"GET / HTTP/1.1\r\nHost: localhost\r\n")
        except OSError:
            pass
    while not ending.wait(1):
        for client in slow:
            try:
                client.sendall(b"X")
            except OSError:
                pass


trickler = threading.Thread(target=trickle)
trickler.start()
time.sleep(2)
tell("beside 1,000 slow ones")
time.sleep(5)
tell("five seconds later")
ending.set()
trickler.join()
for client in slow:
    client.close()
readers = []
for _ in range(200):
    client = connect()
    client.sendall(b"GET /assets/site.css HTTP/1.1\r\nHost: localhost\r\n\r\n" * 50)
    readers.append(client)
tell("beside 200 that never read")
for client in readers:
    client.close()
all_at_once(1000)
time.sleep(3)
tell("at the end", memory() - start < MOST_GROWTH_KB)
server.terminate()
server.wait()
sys.exit(1 if faults else 0)
