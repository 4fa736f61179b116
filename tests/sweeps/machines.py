"""Servers of this machine for sweeps: they run as long as their context does."""

import contextlib
import os
import pathlib
import pwd
import signal
import socket
import subprocess
import time


def free_port():
    with socket.socket() as one:
        one.bind(("127.0.0.1", 0))
        return one.getsockname()[1]


def wait_until(condition, what, seconds=60):
    """Raises TimeoutError when the condition does not come true."""
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            raise TimeoutError(f"{what} did not come up in {seconds} s")
        time.sleep(0.1)


def answers(port):
    with socket.socket() as one:
        return one.connect_ex(("127.0.0.1", port)) == 0


def stop(process):
    process.send_signal(signal.SIGTERM)
    try:
        process.wait(timeout=20)
    except subprocess.TimeoutExpired:
        process.kill()
        process.wait()


@contextlib.contextmanager
def started(command, log, environment=None):
    """A server in the foreground; what it says goes into a file."""
    with log.open("ab") as said:
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=said, stderr=said,
                                   env=environment)
    try:
        yield process
    finally:
        stop(process)


@contextlib.contextmanager
def ssh(folder, path):
    """An ssh server with keys of its own, which two names lead to.

    Yields what a command needs in its environment to reach them: a path with an `ssh` that knows
    the server. Commands that come through it find programs in `path`.
    """
    folder = folder / "ssh"
    folder.mkdir()
    port = free_port()
    user = pwd.getpwuid(os.getuid()).pw_name
    for key in ("host", "user"):
        subprocess.run(["ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-f", folder / key],
                       check=True)
    public = (folder / "host.pub").read_text(encoding="utf-8")
    (folder / "known").write_text(f"[127.0.0.1]:{port} {public}", encoding="utf-8")
    (folder / "server").write_text(
        f"Port {port}\nListenAddress 127.0.0.1\nHostKey {folder}/host\n"
        f"AuthorizedKeysFile {folder}/user.pub\nPidFile none\nUsePAM no\nStrictModes no\n"
        f"PasswordAuthentication no\nPermitRootLogin prohibit-password\nMaxStartups 100\n"
        f"SetEnv PATH={path}\n", encoding="utf-8")
    (folder / "client").write_text(
        f"Host machine-1 machine-2\n  HostName 127.0.0.1\n  Port {port}\n  User {user}\n"
        f"  IdentityFile {folder}/user\n  IdentitiesOnly yes\n"
        f"  UserKnownHostsFile {folder}/known\n  StrictHostKeyChecking yes\n"
        f"  LogLevel ERROR\n", encoding="utf-8")
    programs = folder / "bin"
    programs.mkdir()
    wrapper = programs / "ssh"
    wrapper.write_text(f'#!/bin/sh\nexec /usr/bin/ssh -F {folder}/client "$@"\n', encoding="utf-8")
    wrapper.chmod(0o755)
    if os.getuid() == 0:
        pathlib.Path("/run/sshd").mkdir(mode=0o755, exist_ok=True)
    with started(["/usr/sbin/sshd", "-D", "-e", "-f", folder / "server"], folder / "log"):
        wait_until(lambda: answers(port), "sshd")
        yield {"PATH": f"{programs}:{path}"}


@contextlib.contextmanager
def slurm(folder, path):
    """A cluster of this machine alone. Yields what a command needs in its environment."""
    folder = folder / "slurm"
    for name in ("state", "spool", "munge"):
        (folder / name).mkdir(parents=True)
    (folder / "munge").chmod(0o711)  # whoever reaches the socket may ask
    key = folder / "munge" / "key"
    key.write_bytes(os.urandom(1024))
    key.chmod(0o600)
    host = socket.gethostname().partition(".")[0]
    user = pwd.getpwuid(os.getuid()).pw_name
    controller, node = free_port(), free_port()
    configuration = folder / "slurm.conf"
    configuration.write_text(
        f"ClusterName=sweeps\nSlurmctldHost={host}(127.0.0.1)\n"
        f"SlurmctldPort={controller}\nSlurmdPort={node}\nSlurmUser={user}\nSlurmdUser={user}\n"
        f"AuthType=auth/munge\nAuthInfo=socket={folder}/munge/socket\n"
        f"StateSaveLocation={folder}/state\nSlurmdSpoolDir={folder}/spool\n"
        f"SlurmctldPidFile={folder}/slurmctld.pid\nSlurmdPidFile={folder}/slurmd.pid\n"
        # No control groups: they belong to the machine. Tasks are bound to their processors.
        f"ProctrackType=proctrack/linuxproc\nTaskPlugin=task/affinity\n"
        f"JobAcctGatherType=jobacct_gather/none\nMpiDefault=none\n"
        f"SelectType=select/cons_tres\nSelectTypeParameters=CR_CPU\n"
        f"NodeName={host} NodeAddr=127.0.0.1 CPUs={os.cpu_count()} State=UNKNOWN\n"
        f"PartitionName=all Nodes=ALL Default=YES State=UP MaxTime=INFINITE\n", encoding="utf-8")
    environment = {"PATH": path, "SLURM_CONF": str(configuration)}
    everything = {**os.environ, **environment}

    def is_idle():
        run = subprocess.run(["sinfo", "-h", "-o", "%t"], env=everything, check=False,
                             capture_output=True, text=True)
        return run.stdout.strip() == "idle"

    munge = folder / "munge"
    with contextlib.ExitStack() as servers:
        servers.enter_context(started(
            ["munged", "--foreground", f"--key-file={key}", f"--socket={munge}/socket",
             f"--pid-file={munge}/pid", f"--log-file={munge}/log", f"--seed-file={munge}/seed"],
            folder / "log"))
        wait_until((munge / "socket").exists, "munged")
        for server in ("slurmctld", "slurmd"):
            servers.enter_context(started([server, "-D"], folder / "log", everything))
        wait_until(is_idle, "slurm")
        yield environment


@contextlib.contextmanager
def dask(folder, path):
    """A scheduler and two workers. Yields what a command needs in its environment."""
    folder = folder / "dask"
    folder.mkdir()
    port = free_port()
    address = f"tcp://127.0.0.1:{port}"
    environment = {**os.environ, "PATH": path}
    with contextlib.ExitStack() as servers:
        servers.enter_context(started(
            ["dask-scheduler", "--host", "127.0.0.1", "--port", str(port), "--no-dashboard"],
            folder / "log", environment))
        wait_until(lambda: answers(port), "dask-scheduler")
        servers.enter_context(started(
            ["dask-worker", address, "--host", "127.0.0.1", "--nworkers", "2", "--nthreads", "1",
             "--no-dashboard", "--local-directory", str(folder)], folder / "log", environment))
        yield {"PATH": path, "SCHEDULER": address}
