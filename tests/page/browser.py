"""Debian's Chromium without a window, driven through its own protocol over a pair of pipes."""

import base64
import json
import os
import select
import subprocess
import tempfile
import time
from pathlib import Path
from typing import Any

ARGUMENTS = ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--remote-debugging-pipe",
             "--no-first-run", "--disable-extensions", "--disable-background-networking", "--hide-scrollbars")


class Browser:
    """One browser with one page.  'faults' has every error of the page, 'requests' every address that it asked for."""

    def __init__(self, patience: float = 60) -> None:
        self.patience = patience
        self.faults: list[str] = []
        self.requests: list[str] = []
        self._last = 0
        self._buffer = b""
        self._session: str | None = None
        self._loaded = False
        self._home = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        commands, self._write = os.pipe()
        self._read, answers = os.pipe()
        environment = {name: value for name, value in os.environ.items() if name not in ("LD_PRELOAD", "ASAN_OPTIONS")}
        self._process = subprocess.Popen(
            ["bash", "-c", f'exec "$@" 3<&{commands} 4>&{answers}', "chromium", "chromium", *ARGUMENTS,
             f"--user-data-dir={self._home.name}"],
            pass_fds=(commands, answers), env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(commands)
        os.close(answers)
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        self._session = self.call("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log", "Network"):
            self.call(f"{domain}.enable")

    def __enter__(self) -> "Browser":
        return self

    def __exit__(self, *_: object) -> None:
        self._process.terminate()
        self._process.wait()
        os.close(self._write)
        os.close(self._read)
        self._home.cleanup()

    def call(self, method: str, **parameters: object) -> Any:
        self._last += 1
        message: dict[str, object] = {"id": self._last, "method": method, "params": parameters}
        if self._session:
            message["sessionId"] = self._session
        os.write(self._write, json.dumps(message).encode() + b"\0")
        end = time.monotonic() + self.patience
        while True:
            answer = self._next(end)
            if answer.get("id") == self._last:
                assert "error" not in answer, f"{method}: {answer['error']}"
                return answer["result"]

    def _next(self, end: float) -> Any:
        while b"\0" not in self._buffer:
            assert select.select([self._read], [], [], max(0, end - time.monotonic()))[0], "the browser does not answer"
            self._buffer += os.read(self._read, 1 << 20)
        message, self._buffer = self._buffer.split(b"\0", 1)
        event = json.loads(message)
        self._note(event.get("method"), event.get("params", {}))
        return event

    def _note(self, method: str | None, event: Any) -> None:
        if method == "Network.requestWillBeSent":
            self.requests.append(event["request"]["url"])
        elif method == "Runtime.exceptionThrown":
            self.faults.append(str(event["exceptionDetails"].get("exception", event["exceptionDetails"])))
        elif method == "Runtime.consoleAPICalled" or method == "Log.entryAdded":
            entry = event.get("entry", event)
            if entry.get("level", entry.get("type")) in ("error", "warning", "assert"):
                self.faults.append(json.dumps(entry))
        elif method == "Page.loadEventFired":
            self._loaded = True

    def open(self, address: str | Path) -> None:
        self._loaded = False
        self.call("Page.navigate", url=address.as_uri() if isinstance(address, Path) else address)
        end = time.monotonic() + self.patience
        while not self._loaded:
            self._next(end)

    def ask(self, expression: str) -> Any:
        """The value of an expression; a promise is waited for."""
        answer = self.call("Runtime.evaluate", expression=expression, returnByValue=True, awaitPromise=True)
        assert "exceptionDetails" not in answer, f"{expression}: {answer['exceptionDetails']}"
        return answer["result"].get("value")

    def await_true(self, expression: str, seconds: float) -> float:
        """How many seconds it took until the expression was true."""
        start = time.monotonic()
        while not self.ask(expression):
            assert time.monotonic() < start + seconds, f"not true after {seconds} s: {expression}"
            time.sleep(0.02)
        return time.monotonic() - start

    def picture(self, file: Path, width: int, height: int, dark: bool = False) -> None:
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1, mobile=False)
        self.call("Emulation.setEmulatedMedia",
                  features=[{"name": "prefers-color-scheme", "value": "dark" if dark else "light"}])
        file.write_bytes(base64.b64decode(self.call("Page.captureScreenshot", format="png")["data"]))
