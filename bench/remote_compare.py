#!/usr/bin/env python3
"""Times pvcompare -s of a local tree against the same tree through ssh:// and
compares it with rsync -rn -e "ssh -p PORT" on the same pair, paired and
interleaved (the order alternates from round to round), printing medians and
the ratio. It starts its own sshd on 127.0.0.1 (as the tests do: temporary
host and user keys, internal-sftp; needs root for /run/sshd), and runs every
case twice: over loopback, and through a forwarder in this script that holds
every chunk back 10 ms each way (20 ms per round trip; the machine has no
traffic shaping).

Usage: bench/remote_compare.py [--build DIR] [--runs N] [--files N] [--dirs N]
"""

import argparse
import asyncio
import os
import socket
import statistics
import subprocess
import sys
import tempfile
import threading
import time


def free_port():
    with socket.socket() as s:
        s.bind(("127.0.0.1", 0))
        return s.getsockname()[1]


def make_tree(root, files, dirs):
    per_dir = max(1, files // dirs)
    stamp = time.time() - 86400
    for d in range(dirs):
        path = os.path.join(root, "d%03d" % (d % 100), "s%04d" % d)
        os.makedirs(path, exist_ok=True)
        for f in range(per_dir):
            name = os.path.join(path, "file %d.txt" % f)
            with open(name, "wb") as out:
                out.write(b"x" * (f % 97))
            os.utime(name, (stamp, stamp))


def start_sshd(tmp):
    os.makedirs("/run/sshd", exist_ok=True)
    client = os.path.join(tmp, "client")
    os.makedirs(client)
    for key in (os.path.join(tmp, "host_key"), os.path.join(client, "id_ed25519")):
        subprocess.run(["ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-f", key], check=True)
    auth = os.path.join(tmp, "authorized_keys")
    with open(auth, "w") as out, open(os.path.join(client, "id_ed25519.pub")) as pub:
        out.write(pub.read())
    port = free_port()
    config = os.path.join(tmp, "sshd_config")
    with open(config, "w") as out:
        out.write("Port %d\nListenAddress 127.0.0.1\nHostKey %s/host_key\nPidFile %s/sshd.pid\n"
                  "AuthorizedKeysFile %s\nStrictModes no\nUsePAM no\nPasswordAuthentication no\n"
                  "Subsystem sftp internal-sftp\nLogLevel ERROR\n" % (port, tmp, tmp, auth))
    sshd = subprocess.Popen(["/usr/sbin/sshd", "-D", "-e", "-f", config])
    for _ in range(200):
        try:
            socket.create_connection(("127.0.0.1", port), 0.1).close()
            break
        except OSError:
            time.sleep(0.05)
    return sshd, port, client


def start_delay_proxy(target_port, delay):
    """A TCP forwarder that passes every chunk on after `delay` seconds."""
    port = free_port()
    loop = asyncio.new_event_loop()

    async def pipe(reader, writer):
        try:
            while data := await reader.read(65536):
                await asyncio.sleep(delay)
                writer.write(data)
                await writer.drain()
        except (ConnectionError, asyncio.CancelledError):
            pass
        finally:
            writer.close()

    async def serve(reader, writer):
        up_reader, up_writer = await asyncio.open_connection("127.0.0.1", target_port)
        await asyncio.gather(pipe(reader, up_writer), pipe(up_reader, writer))

    async def main():
        server = await asyncio.start_server(serve, "127.0.0.1", port)
        async with server:
            await server.serve_forever()

    threading.Thread(target=lambda: loop.run_until_complete(main()), daemon=True).start()
    time.sleep(0.2)
    return port


def timed(argv, env):
    start = time.perf_counter()
    done = subprocess.run(argv, env=env, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
    if done.returncode not in (0, 1):
        sys.exit("%s failed: %s" % (argv[0], done.stderr.decode(errors="replace")))
    return time.perf_counter() - start


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", default=os.path.join(here, "..", "build"))
    parser.add_argument("--runs", type=int, default=5)
    parser.add_argument("--files", type=int, default=20000)
    parser.add_argument("--dirs", type=int, default=2000)
    args = parser.parse_args()
    pvcompare = os.path.join(args.build, "src", "pvcompare")

    with tempfile.TemporaryDirectory() as tmp:
        tree = os.path.join(tmp, "tree")
        make_tree(tree, args.files, args.dirs)
        sshd, port, client = start_sshd(tmp)
        try:
            proxy = start_delay_proxy(port, 0.010)
            with open(os.path.join(tmp, "host_key.pub")) as pub:
                key = pub.read().split()
            with open(os.path.join(client, "known_hosts"), "w") as out:
                for p in (port, proxy):
                    out.write("[127.0.0.1]:%d %s %s\n" % (p, key[0], key[1]))
            env = dict(os.environ, PAIRVIEW_SSH_DIR=client, PAIRVIEW_HOME=tmp)
            env.pop("SSH_AUTH_SOCK", None)
            print("%d files in %d directories, %d runs each, load %.2f" %
                  (args.files, args.dirs, args.runs, os.getloadavg()[0]))
            for label, p in (("loopback", port), ("+20 ms round trip", proxy)):
                ssh = ("ssh -p %d -i %s/id_ed25519 -o IdentitiesOnly=yes "
                       "-o UserKnownHostsFile=%s/known_hosts -o BatchMode=yes" % (p, client, client))
                ours = [pvcompare, "-s", tree, "ssh://127.0.0.1:%d%s" % (p, tree)]
                peer = ["rsync", "-rn", "-e", ssh, tree + "/", "127.0.0.1:" + tree + "/"]
                times = {"pvcompare": [], "rsync": []}
                for run in range(args.runs):
                    order = [("pvcompare", ours), ("rsync", peer)]
                    for name, argv in (order if run % 2 == 0 else order[::-1]):
                        times[name].append(timed(argv, env))
                a = statistics.median(times["pvcompare"])
                b = statistics.median(times["rsync"])
                print("%-18s pvcompare %.2f s   rsync -rn %.2f s   ratio %.2f" % (label, a, b, a / b))
        finally:
            sshd.terminate()
            sshd.wait()


if __name__ == "__main__":
    main()
